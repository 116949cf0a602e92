/// @file
/// The most memory that writing and reading a trajectory stream take, against FlatBuffers' tree of objects.
/// Each is measured in a child process of its own.

#include "Benchmarks.h"
#include "baselines/ObjectTreeStream.h"
#include "bench/workload/MemoryStream.h"
#include "bench/workload/ProcessMemory.h"
#include "bench/workload/RecordedStore.h"
#include "bench/workload/Walk.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace bench
{

namespace
{

using oV::Roamscan::TrajectoryData;

void require(bool succeeded)
{
    if (!succeeded) {
        throw std::runtime_error("the stream could not be written or read");
    }
}

// Once a page is touched it counts; what the stream itself lies in is to count before the measurement begins.
void touch(std::span<char> memory)
{
    constexpr std::size_t page = 4096;
    for (std::size_t i = 0; i < memory.size(); i += page) {
        char volatile& byte = memory[i];
        byte = byte;
    }
}

// How much the peak rises, in a child process that has only what is needed.
Subject peakOfWriting(std::string label, auto write)
{
    auto const measure = [write] {
        TrajectoryData const store = recordedStore();
        SharedMemory const memory(roomForFrame);
        touch(memory.bytes());
        MemoryStreamBuffer buffer(memory.bytes());
        std::ostream stream(&buffer);
        double const before = peakMemory();
        require(write(store, stream));
        return peakMemory() - before;
    };
    return {std::move(label), [measure] { return inChild(measure); }};
}

Subject peakOfReading(std::string label, auto read)
{
    auto const measure = [read] {
        SharedMemory const memory(roomForFrame);
        // The frame is made in a process of its own, so that making it leaves no mark on this one's peak.
        inChild([&memory] {
            MemoryStreamBuffer buffer(memory.bytes());
            std::ostream stream(&buffer);
            require(recordedStore().write(stream));
            return 0.0;
        });
        touch(memory.bytes());
        MemoryStreamBuffer buffer(memory.bytes());
        std::istream stream(&buffer);
        TrajectoryData store;
        double const before = peakMemory();
        require(read(store, stream));
        return peakMemory() - before;
    };
    return {std::move(label), [measure] { return inChild(measure); }};
}

Comparison compareMemory(std::string const& what, Subject ours, Subject tree)
{
    constexpr double target = 0.65;
    return {"Peak memory of a trajectory stream",
            what + " " + withCommas(recordedNodes) + " nodes",
            megabytes,
            1,
            std::move(ours),
            {Baseline{std::move(tree), Ratio::TimesTheMemory, target}}};
}

} // namespace

std::vector<Comparison> streamMemoryBenchmarks()
{
    auto const write = [](TrajectoryData const& store, std::ostream& stream) { return store.write(stream); };
    auto const read = [](TrajectoryData& store, std::istream& stream) {
        return store.readFromStream(stream);
    };
    return {compareMemory("writing",
                          peakOfWriting("write", write),
                          peakOfWriting("object tree", writeThroughObjectTree)),
            compareMemory("reading",
                          peakOfReading("readFromStream", read),
                          peakOfReading("object tree", readThroughObjectTree))};
}

} // namespace bench
