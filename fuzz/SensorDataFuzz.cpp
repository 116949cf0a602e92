/// @file
/// Reads any bytes as a sensor data stream. A store that was read can be written, read again, viewed by time,
/// shifted, rotated and merged.

#include "StreamInput.h"

#include <roamscan/sensors/SensorData.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

namespace
{

using fuzz::require;
using oV::Roamscan::SensorData;

template <typename T>
bool sameKeys(SensorData::Samples<T> const& a, SensorData::Samples<T> const& b)
{
    if (a.size() != b.size()) {
        return false;
    }
    for (auto const& [name, samples] : a) {
        auto const other = b.find(name);
        if (other == b.end() || other->second.size() != samples.size()) {
            return false;
        }
        for (auto const& [key, record] : samples) {
            if (!other->second.contains(key)) {
                return false;
            }
        }
    }
    return true;
}

void requireRoundTrip(SensorData const& store)
{
    std::stringstream stream;
    require(store.write(stream), "a store that was read can be written");
    auto const again = SensorData::read(stream);
    require(again != nullptr, "a written store can be read");
    require(sameKeys(store.imuData, again->imuData) &&
                sameKeys(store.rangefinderData, again->rangefinderData) &&
                again->sensorPoses.size() == store.sensorPoses.size() &&
                again->posesApplied == store.posesApplied,
            "a store is unchanged after a round trip");
}

void useStore(SensorData& store)
{
    auto const view = store.createTimedData();
    SensorData copy(store);
    copy.modifyTime([](int64 time) { return time / 2; });
    copy.applyPoses();
    require(copy.posesApplied, "poses are applied");
    if (!store.posesApplied) {
        copy.posesApplied = false;
    }
    copy += store;
    require(copy.createTimedData()->size() >= view->size(), "a merged store has every time of its parts");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const bytes = fuzz::streamBytes({data, size});
    std::istringstream stream(bytes);
    std::shared_ptr<SensorData> store;
    fuzz::mayRunOutOfMemory([&] { store = SensorData::read(stream); });
    if (store) {
        fuzz::requirePositionAfterBuffer(stream, bytes);
        requireRoundTrip(*store);
        useStore(*store);
    }
    return 0;
}
