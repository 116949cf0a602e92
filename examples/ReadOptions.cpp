/// @file
/// The options of a plug-in: reads one with a default, sets one, and builds a JSON document of settings in
/// which options that were set on purpose override the plug-in's defaults.

#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsCont.h>
#include <roamscan/options/RoamscanOptionsHost.h>
#include <roamscan/options/RoamscanOptionsJsonMerger.h>

#include <nlohmann/json.hpp>

#include <cstdio>

using Bv_1_1::String;
using oV::Roamscan::getOption;
using oV::Roamscan::RoamscanOptions;
using oV::Roamscan::RoamscanOptionsCont;
using oV::Roamscan::RoamscanOptionsJsonMerger;
using oV::Roamscan::setOption;

namespace
{

// The host does this when it starts; see HostOptions.cpp.
void startHost()
{
    constexpr auto fresh = Bv_1_1::BaseNode::CreateType::Fresh;
    Bv_1_1::SmartPtr<RoamscanOptionsCont> const options(new RoamscanOptionsCont(fresh, nullptr));
    options->init(fresh, nullptr);
    oV::Roamscan::RoamscanOptionsHost::setup(options.get());
    RoamscanOptions::cleanUp();
}

nlohmann::json settings()
{
    RoamscanOptionsJsonMerger merger(L"Denoise", nlohmann::json::object());
    merger[{"filter", "radius"}] = 0.05; // metres; the option "Denoise.filter.radius"
    merger[{"filter", "name"}] = "median";
    merger[{"passes"}] = 3;
    return merger.get();
}

} // namespace

int main()
{
    // Without a host there are no options, and each read returns the default.
    std::printf("without a host: %d threads\n", getOption<int>(L"Denoise.threads", 4));
    startHost();

    // The first read creates the option with the default of the plug-in.
    int const threads = getOption<int>(L"Denoise.threads", 4);
    auto const title = getOption<String>(L"Denoise.title", L"Denoise points");
    std::printf("%s: %d threads\n", title.stringAnsi(), threads);

    // After an option is set, reads return its value instead of the default.
    setOption<int>(L"Denoise.threads", 8);
    std::printf("now %d threads\n", getOption<int>(L"Denoise.threads", 4));

    // The user has set the radius. The other settings keep the defaults of the plug-in.
    setOption<double>(L"Denoise.filter.radius", 0.2);
    nlohmann::json const document = settings();
    std::printf("%s\n", document.dump(2).c_str());
    bool const isAsSet = document["filter"]["radius"] == 0.2 && document["passes"] == 3;
    return isAsSet && getOption<int>(L"Denoise.threads", 4) == 8 ? 0 : 1;
}
