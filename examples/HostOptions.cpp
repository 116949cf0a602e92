/// @file
/// A host creates the options at its start, reads those of the last session, and saves them at its end.

#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/ReadContext.h>
#include <roamscan/frame/formats/StatusCode.h>
#include <roamscan/frame/formats/WriteContext.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsCont.h>
#include <roamscan/options/RoamscanOptionsHost.h>

#include <cstdio>
#include <fstream>

using Bv_1_1::SmartPtr;
using oV::Roamscan::getOption;
using oV::Roamscan::RoamscanOptions;
using oV::Roamscan::RoamscanOptionsCont;
using oV::Roamscan::setOption;

namespace
{

constexpr char const* fileName = "options.txt";

SmartPtr<RoamscanOptionsCont> newContainer()
{
    constexpr auto fresh = Bv_1_1::BaseNode::CreateType::Fresh;
    SmartPtr<RoamscanOptionsCont> container(new RoamscanOptionsCont(fresh, nullptr));
    container->init(fresh, nullptr);
    return container;
}

void bringUp()
{
    oV::Roamscan::RoamscanOptionsHost::setup(newContainer().get());
    RoamscanOptions::cleanUp(); // creates the options of the library itself
}

// Values of plug-ins that are not loaded are kept, and saved again.
bool load(RoamscanOptionsCont& options)
{
    std::ifstream file(fileName, std::ios::binary);
    oV::ReadContext context;
    int const status = options.readFrom(&file, &context);
    options.initializeCustomAttributes();
    return oV::StatusCode::isTolerated(status);
}

bool save(RoamscanOptionsCont& options)
{
    options.updateToCurrentOptions();
    std::ofstream file(fileName, std::ios::binary);
    oV::WriteContext context;
    return options.writeTo(&file, &context) == oV::StatusCode::ok && file.flush().good();
}

// Simulates the work of the host and its plug-ins.
void work()
{
    setOption<bool>(L"ShowDebug2DWindow", true);
    setOption<double>(L"Denoise.filter.radius", 0.2);
}

} // namespace

int main()
{
    bringUp();
    work();
    {
        auto const access = RoamscanOptions::getLock(); // getOpts() returns null without the lock
        auto const options = RoamscanOptions::getOpts();
        if (!options || !save(*options)) {
            std::printf("the options cannot be saved\n");
            return 1;
        }
        RoamscanOptions::cleanUp(); // as at the start of the next session
        if (!load(*options)) {
            std::printf("the saved options are damaged\n");
            return 1;
        }
    }
    double const radius = getOption<double>(L"Denoise.filter.radius", 0.05);
    std::printf("loaded: radius %g m, debug window %s\n",
                radius,
                getOption<bool>(L"ShowDebug2DWindow", false) ? "shown" : "hidden");
    return radius == 0.2 ? 0 : 1;
}
