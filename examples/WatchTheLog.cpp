/// @file
/// Installs a sink that prints the messages of the library's log. The library itself prints nothing.

#include <roamscan/frame/log/LogMessage.h>
#include <roamscan/frame/log/Models.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <cstdio>
#include <sstream>

using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;

int main()
{
    oV::Models::the().setLogSink([](oV::LogMessage const& message) {
        std::printf(
            "[%d] %s (%s)\n", message.severity, message.message.stringAnsi(), message.file.stringAnsi());
    });

    // A device that the file format does not define is dropped on reading, with a message in the log.
    TrajectoryData store;
    store.devicePositions[Device::DeviceUnknown] = TrafoT<double>::Identity();
    std::stringstream stream(std::ios::in | std::ios::out | std::ios::binary);
    if (!store.write(stream)) {
        return 1;
    }
    auto const back = TrajectoryData::read(stream);
    std::printf("read %zu devices\n", back ? back->devicePositions.size() : 0);
    return 0;
}
