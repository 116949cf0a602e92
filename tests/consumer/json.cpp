/// @file
/// A plug-in that uses the package's component Json.

#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsCont.h>
#include <roamscan/options/RoamscanOptionsHost.h>
#include <roamscan/options/RoamscanOptionsJsonMerger.h>

#include <nlohmann/json.hpp>

using oV::Roamscan::RoamscanOptions;
using oV::Roamscan::RoamscanOptionsCont;

int main()
{
    constexpr auto fresh = Bv_1_1::BaseNode::CreateType::Fresh;
    Bv_1_1::SmartPtr<RoamscanOptionsCont> const options(new RoamscanOptionsCont(fresh, nullptr));
    options->init(fresh, nullptr);
    oV::Roamscan::RoamscanOptionsHost::setup(options.get());
    RoamscanOptions::cleanUp();

    oV::Roamscan::setOption<double>(L"Plugin.radius", 0.5);
    oV::Roamscan::RoamscanOptionsJsonMerger settings(L"Plugin", nlohmann::json::object());
    settings[{"radius"}] = 0.1;
    settings[{"steps"}] = 3;
    if (settings.get() != nlohmann::json({{"radius", 0.5}, {"steps", 3}})) {
        return 1;
    }
    return oV::Roamscan::getOption<bool>(L"Calculate3DTrajectory", false) ? 0 : 2;
}
