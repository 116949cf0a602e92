/// @file
/// Reads any bytes as a trajectory data stream. A store is read completely or unchanged; a store that was
/// read can be written, read again, and sampled.

#include "StreamInput.h"

#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <new>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>

namespace
{

using fuzz::require;
using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::Trajectory;
using oV::Roamscan::TrajectoryData;
using oV::Roamscan::TrajectoryNode;

bool sameBits(std::span<double const> a, std::span<double const> b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](double x, double y) {
        return std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y);
    });
}

bool sameBits(TrafoT<double> const& a, TrafoT<double> const& b)
{
    return sameBits(a.serialize(), b.serialize()) && a.valid() == b.valid();
}

bool sameBits(Eigen::Matrix3d const& a, Eigen::Matrix3d const& b)
{
    return sameBits(std::span(a.data(), 9), std::span(b.data(), 9));
}

// A field that equals its default is not written, and -0.0 equals 0.0: the time is the only number whose sign
// may change in a round trip.
bool sameTime(double a, double b)
{
    return a == b || std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool sameBits(TrajectoryNode const& a, TrajectoryNode const& b)
{
    return sameBits(a.pose, b.pose) && sameTime(a.time, b.time) && a.type == b.type &&
           sameBits(a.matrixA, b.matrixA) && sameBits(a.matrixB, b.matrixB) && a.flag == b.flag;
}

bool sameBits(TrajectoryData const& a, TrajectoryData const& b)
{
    return std::equal(a.nodes.begin(),
                      a.nodes.end(),
                      b.nodes.begin(),
                      b.nodes.end(),
                      [](auto const& x, auto const& y) { return sameBits(x, y); }) &&
           a.devicePositions.size() == b.devicePositions.size() &&
           std::all_of(a.devicePositions.begin(), a.devicePositions.end(), [&b](auto const& entry) {
               auto const other = b.devicePositions.find(entry.first);
               return other != b.devicePositions.end() && sameBits(entry.second, other->second);
           });
}

// A store that no stream can produce: the valid flag is not stored, and the unknown device is dropped.
TrajectoryData knownStore()
{
    TrajectoryData store;
    store.nodes.emplace_back(1.5, TrafoT<double>::Invalid());
    store.nodes.emplace_back(-2.5);
    store.devicePositions[Device::DeviceUnknown] = TrafoT<double>::Translation({1.0, 2.0, 3.0});
    return store;
}

void requireRoundTrip(TrajectoryData const& store)
{
    std::stringstream stream;
    require(store.write(stream), "a store that was read can be written");
    TrajectoryData again = knownStore();
    require(again.readFromStream(stream), "a written store can be read");
    require(sameBits(store, again), "a store is unchanged after a round trip");
}

void sampleEverywhere(Trajectory const& trajectory)
{
    double const start = trajectory.getStartTime().get();
    double const stop = trajectory.getStopTime().get();
    std::array const times = {
        start, stop, start + (stop - start) / 2.0, start - 1.0, std::numeric_limits<double>::quiet_NaN()};
    for (double const time : times) {
        try {
            static_cast<void>(trajectory.sample(time));
        } catch (std::out_of_range const&) {
            continue; // the only exception that is allowed
        }
    }
}

void useStore(TrajectoryData const& store)
{
    sampleEverywhere(oV::Roamscan::buildTrajectoryFromTrajectoryNodes(store.nodes));
    if (store.devicePositions.contains(Device::Device0) && store.devicePositions.contains(Device::Device1)) {
        sampleEverywhere(store.buildTrajectoryFromTrajectoryNodes(Device::Device0, Device::Device1));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const bytes = fuzz::streamBytes({data, size});
    std::istringstream stream(bytes);
    static TrajectoryData const untouched = knownStore();
    TrajectoryData store = untouched;
    bool isRead = false;
    fuzz::mayRunOutOfMemory([&] { isRead = store.readFromStream(stream); });
    if (!isRead) {
        require(sameBits(store, untouched), "a failed read leaves the store unchanged");
        return 0;
    }
    fuzz::requirePositionAfterBuffer(stream, bytes);
    requireRoundTrip(store);
    useStore(store);
    return 0;
}
