/// @file
/// Writing and reading a sensor stream, against the tree of objects that FlatBuffers generates, against
/// copying the bytes, and against making the same store from arrays: time and peak memory.

#include "bench/Benchmarks.h"
#include "bench/StreamFunctions.h"
#include "bench/baselines/ObjectTrees.h"
#include "bench/workload/SensorArrays.h"

#include <roamscan/sensors/SensorData.h>

#include <cstring>

namespace bench
{

namespace
{

SensorArrays arraysOfStream()
{
    return recordedArrays(600'000, 300'000, 20);
}

struct Format
{
    using Store = oV::Roamscan::SensorData;

    static Store make() { return storeFromArrays(arraysOfStream()); }
    static bool write(Store const& store, std::ostream& stream) { return store.write(stream); }
    static std::shared_ptr<Store> read(std::istream& stream) { return Store::read(stream); }

    static constexpr bool (*writeThroughTree)(Store const&, std::ostream&) = writeThroughObjectTree;
    static constexpr auto readThroughTree = readSensorsThroughObjectTree;
};

void copyingBytes(benchmark::State& state)
{
    auto const& input = streamInput<Format>();
    timeEach(state, [&input] {
        std::vector<char> copy(input.size);
        std::memcpy(copy.data(), input.memory.data(), input.size);
        return copy;
    });
}

void fromArrays(benchmark::State& state)
{
    static SensorArrays const arrays = arraysOfStream();
    timeEach(state, [] { return std::make_shared<Format::Store>(storeFromArrays(arrays)); });
}

// The least memory with which a stream can be read as a whole.
void peakOfBufferAndStore(benchmark::State& state)
{
    struct StreamAndArrays
    {
        WrittenStream<Format> stream;
        SensorArrays arrays = arraysOfStream();
    };
    struct BufferAndStore
    {
        std::vector<char> buffer;
        Format::Store store;
    };
    measurePeakMemory<StreamAndArrays>(state, [](StreamAndArrays& all) {
        auto const bytes = all.stream.memory.bytes().first(all.stream.size);
        return BufferAndStore{{bytes.begin(), bytes.end()}, storeFromArrays(all.arrays)};
    });
}

} // namespace

Group sensorStream()
{
    return {"A sensor stream of 900,000 samples",
            Cost::ReportedTime,
            {{"writing",
              milliseconds,
              {"write", writing<Format, Format::write>},
              {{"object tree", writing<Format, Format::writeThroughTree>, timesAsFast, 2.5},
               {"memcpy of the bytes", copyingBytes, timesTheTime}}},
             {"reading",
              milliseconds,
              {"read", reading<Format, Format::read>},
              {{"object tree", reading<Format, Format::readThroughTree>, timesAsFast, 2.5},
               {"from arrays", fromArrays, timesTheTime, 1.3},
               {"memcpy of the bytes", copyingBytes, timesTheTime}}}}};
}

Group sensorStreamMemory()
{
    return {"Peak memory of a sensor stream of 900,000 samples",
            Cost::PeakMemory,
            {{"writing",
              megabytes,
              {"write", peakOfWriting<Format, Format::write>},
              {{"object tree", peakOfWriting<Format, Format::writeThroughTree>, timesTheMemory}}},
             {"reading",
              megabytes,
              {"read", peakOfReading<Format, Format::read>},
              {{"object tree", peakOfReading<Format, Format::readThroughTree>, timesTheMemory},
               {"buffer + store", peakOfBufferAndStore, timesTheMemory, 1.2}}}}};
}

} // namespace bench
