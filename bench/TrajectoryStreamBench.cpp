/// @file
/// Writing and reading a trajectory stream, against FlatBuffers' tree of objects.

#include "Benchmarks.h"
#include "baselines/ObjectTreeStream.h"
#include "bench/workload/MemoryStream.h"
#include "bench/workload/RecordedStore.h"
#include "bench/workload/Walk.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace bench
{

namespace
{

using oV::Roamscan::TrajectoryData;
using oV::Roamscan::TrajectoryNode;

constexpr int repetitions = 7;

bool sameNode(TrajectoryNode const& a, TrajectoryNode const& b)
{
    return a.time == b.time && a.pose.serialize() == b.pose.serialize() && a.type == b.type &&
           a.matrixA == b.matrixA && a.matrixB == b.matrixB && a.flag == b.flag;
}

bool writeStore(TrajectoryData const& store, std::ostream& stream)
{
    return store.write(stream);
}

bool readStore(TrajectoryData& store, std::istream& stream)
{
    return store.readFromStream(stream);
}

// The store, and memory with its frame in it.
struct Inputs
{
    Inputs() : store(recordedStore()), memory(roomForFrame)
    {
        std::size_t const size = frameOf(writeThroughObjectTree);
        std::vector<char> const theirs(memory.begin(), memory.begin() + static_cast<std::ptrdiff_t>(size));
        bool const sameFrames =
            frameOf(writeStore) == size && std::equal(theirs.begin(), theirs.end(), memory.begin());
        if (!sameFrames || !comesBack(contentsOfFrame(readStore)) ||
            !comesBack(contentsOfFrame(readThroughObjectTree)))
        {
            throw std::logic_error("the store and the object tree differ");
        }
    }

    // Writes the store's frame into the memory, and says how long it is.
    std::size_t frameOf(auto write)
    {
        MemoryStreamBuffer buffer(memory);
        std::ostream stream(&buffer);
        if (!write(store, stream)) {
            throw std::runtime_error("the stream could not be written");
        }
        return buffer.written();
    }

    std::vector<TrajectoryNode> contentsOfFrame(auto read)
    {
        MemoryStreamBuffer buffer(memory);
        std::istream stream(&buffer);
        TrajectoryData contents;
        if (!read(contents, stream)) {
            throw std::runtime_error("the stream could not be read");
        }
        return std::move(contents.nodes);
    }

    bool comesBack(std::vector<TrajectoryNode> const& nodes) const
    {
        return std::equal(nodes.begin(), nodes.end(), store.nodes.begin(), store.nodes.end(), sameNode);
    }

    TrajectoryData store;
    std::vector<char> memory;
};

Inputs& inputs()
{
    static Inputs all;
    return all;
}

auto writing(auto write)
{
    return [write](benchmark::State& state) {
        auto& all = inputs();
        timeEach(state, [&all, write] { return all.frameOf(write); });
    };
}

auto reading(auto read)
{
    return [read](benchmark::State& state) {
        auto& all = inputs();
        timeEach(state, [&all, read] { return all.contentsOfFrame(read); });
    };
}

// What a node takes of the frame; all take the same.
double bytesPerNode()
{
    constexpr std::size_t few = 1000;
    std::ostringstream stream;
    if (!recordedStore(few).write(stream)) {
        throw std::runtime_error("the stream could not be written");
    }
    return static_cast<double>(stream.str().size()) / few;
}

Comparison compareStream(std::string const& what, Subject ours, Subject tree)
{
    return {"A trajectory stream",
            what + " " + withCommas(recordedNodes) + " nodes",
            megabytesPerSecond,
            repetitions,
            std::move(ours),
            {Baseline{std::move(tree), Ratio::TimesAsFast, 2.0}}};
}

} // namespace

std::vector<Comparison> trajectoryStreamBenchmarks()
{
    Workload const frame{bytesPerNode() * recordedNodes};
    return {compareStream("writing",
                          timedByHand("write", "write/store", frame, writing(writeStore)),
                          timedByHand("object tree", "write/tree", frame, writing(writeThroughObjectTree))),
            compareStream("reading",
                          timedByHand("readFromStream", "read/store", frame, reading(readStore)),
                          timedByHand("object tree", "read/tree", frame, reading(readThroughObjectTree)))};
}

} // namespace bench
