/// @file
/// Writing and reading a sensor stream, against the tree of objects that FlatBuffers generates, against
/// copying the bytes, and against making the same store from arrays: time and peak memory.

#include "bench/Benchmarks.h"
#include "bench/StreamFunctions.h"
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

struct SensorFormat
{
    using Store = oV::Roamscan::SensorData;
    using Root = oV::Roamscan::SensorSchema::SensorDataRoot;

    static constexpr char const* name = "sensor stream of 900,000 samples";
    static constexpr char const* contents = "";
    static constexpr char const* readName = "read";
    static inline Unit const& unit = milliseconds;

    static Store make() { return storeFromArrays(arraysOfStream()); }
    static bool write(Store const& store, std::ostream& stream) { return store.write(stream); }
    static std::shared_ptr<Store> read(std::istream& stream) { return Store::read(stream); }
};

void copyingBytes(benchmark::State& state)
{
    timeOnStream<SensorFormat>(state, [](auto& input) {
        std::vector<char> copy(input.size);
        std::memcpy(copy.data(), input.memory.data(), input.size);
        return copy;
    });
}

void fromArrays(benchmark::State& state)
{
    static SensorArrays const arrays = arraysOfStream();
    timeEach(state, [] { return std::make_shared<SensorFormat::Store>(storeFromArrays(arrays)); });
}

// The least memory with which a stream can be read as a whole.
void peakOfBufferAndStore(benchmark::State& state)
{
    struct BufferAndStore
    {
        std::vector<char> buffer;
        SensorFormat::Store store;
    };
    measurePeakMemory(state, arraysOfStream, [file = streamFile<SensorFormat>()](SensorArrays const& arrays) {
        return BufferAndStore{wholeFile(file), storeFromArrays(arrays)};
    });
}

} // namespace

Group sensorStream()
{
    Group group = streamTime<SensorFormat>(2.5);
    group.figures.back().baselines.push_back({"from arrays", fromArrays, timesTheTime, 1.3});
    for (Figure& figure : group.figures) {
        figure.baselines.push_back({"memcpy of the bytes", copyingBytes, timesTheTime});
    }
    return group;
}

Group sensorStreamMemory()
{
    Group group = streamMemory<SensorFormat>();
    group.figures.back().baselines.push_back({"buffer + store", peakOfBufferAndStore, timesTheMemory, 1.2});
    return group;
}

} // namespace bench
