/// @file
/// Writing and reading a sensor stream, against the tree of objects that FlatBuffers generates, against
/// copying the bytes, and against making the same store from arrays: time and peak memory.

#include "bench/Benchmarks.h"
#include "bench/StreamFunctions.h"
#include "bench/baselines/SensorObjectTree.h"
#include "bench/workload/SensorArrays.h"

#include <roamscan/sensors/SensorData.h>

#include <cstring>
#include <utility>

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

    static constexpr auto writeThroughTree = writeSensorsThroughObjectTree;
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
    measurePeakMemory(
        state,
        [] { return std::make_unique<StreamAndArrays>(); },
        [](StreamAndArrays const& all) {
            auto const bytes = all.stream.memory.bytes().first(all.stream.size);
            return std::pair(std::vector<char>(bytes.begin(), bytes.end()), storeFromArrays(all.arrays));
        });
}

} // namespace

Group sensorStream()
{
    return {"A sensor stream of 900,000 samples",
            Cost::ReportedTime,
            {{"writing",
              milliseconds,
              {"write", writing<Format>(Format::write)},
              {{"object tree", writing<Format>(Format::writeThroughTree), Ratio::TimesAsFast, 2.5},
               {"memcpy of the bytes", copyingBytes, Ratio::TimesTheTime}}},
             {"reading",
              milliseconds,
              {"read", reading<Format>(Format::read)},
              {{"object tree", reading<Format>(Format::readThroughTree), Ratio::TimesAsFast, 2.5},
               {"from arrays", fromArrays, Ratio::TimesTheTime, 1.3},
               {"memcpy of the bytes", copyingBytes, Ratio::TimesTheTime}}}}};
}

Group sensorStreamMemory()
{
    return {"Peak memory of a sensor stream of 900,000 samples",
            Cost::PeakMemory,
            {{"writing",
              megabytes,
              {"write", peakOfWriting<Format>(Format::write)},
              {{"object tree", peakOfWriting<Format>(Format::writeThroughTree), Ratio::TimesTheMemory}}},
             {"reading",
              megabytes,
              {"read", peakOfReading<Format>(Format::read)},
              {{"object tree", peakOfReading<Format>(Format::readThroughTree), Ratio::TimesTheMemory},
               {"buffer + store", peakOfBufferAndStore, Ratio::TimesTheMemory, 1.2}}}}};
}

} // namespace bench
