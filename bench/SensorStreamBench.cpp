/// @file
/// Writing and reading a sensor stream: against FlatBuffers' tree of objects, against copying the bytes, and
/// making the same store from arrays; in time, and in memory at the peak.

#include "Benchmarks.h"
#include "baselines/SensorObjectTree.h"
#include "bench/workload/MemoryStream.h"
#include "bench/workload/ProcessMemory.h"
#include "bench/workload/SensorArrays.h"

#include <roamscan/sensors/SensorData.h>

#include <cstring>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace bench
{

namespace
{

using oV::Roamscan::SensorData;

constexpr int repetitions = 7;
constexpr std::size_t roomForSensors = 200'000'000;
constexpr char const* group = "A sensor stream of 900,000 samples";

void require(bool holds)
{
    if (!holds) {
        throw std::runtime_error("the sensor stream could not be written or read, or came back changed");
    }
}

std::shared_ptr<SensorData> read(std::span<char> memory, auto reader)
{
    MemoryStreamBuffer buffer(memory);
    std::istream stream(&buffer);
    auto store = reader(stream);
    require(store != nullptr);
    return store;
}

std::size_t write(SensorData const& store, std::span<char> memory, auto writer)
{
    MemoryStreamBuffer buffer(memory);
    std::ostream stream(&buffer);
    require(writer(store, stream));
    return buffer.written();
}

auto const ownReader = [](std::istream& stream) { return SensorData::read(stream); };
auto const ownWriter = [](SensorData const& store, std::ostream& stream) { return store.write(stream); };

// The samples in all their forms.
struct Inputs
{
    Inputs() : arrays(recordedArrays()), store(storeFromArrays(arrays)), memory(roomForSensors)
    {
        size = write(store, memory, writeSensorsThroughObjectTree);
        std::vector<char> const theirs(memory.begin(), memory.begin() + static_cast<std::ptrdiff_t>(size));
        require(write(store, memory, ownWriter) == size &&
                std::equal(theirs.begin(), theirs.end(), memory.begin()));
        for (auto const& back : {read(memory, ownReader), read(memory, readSensorsThroughObjectTree)}) {
            require(back->imuData.at("imu").size() == arrays.imuTimes.size());
            require(back->rangefinderData.at("lidar").size() == arrays.burstTimes.size());
            require(back->rangefinderData.at("lidar").rbegin()->second->getRanges().get() ==
                    store.rangefinderData.at("lidar").rbegin()->second->getRanges().get());
        }
    }

    SensorArrays arrays;
    SensorData store;
    std::vector<char> memory;
    std::size_t size = 0;
};

Inputs& inputs()
{
    static Inputs all;
    return all;
}

Subject timed(std::string label, std::string const& name, auto make)
{
    return timedByHand(std::move(label), "sensors/" + name, Workload{1.0}, [make](benchmark::State& state) {
        auto& all = inputs();
        timeEach(state, [&all, make] { return make(all); });
    });
}

auto const copyBytes = [](Inputs& all) {
    std::vector<char> copy(all.size);
    std::memcpy(copy.data(), all.memory.data(), all.size);
    return copy;
};

Comparison compareWriting()
{
    return {
        group,
        "writing",
        milliseconds,
        repetitions,
        timed("write", "write/store", [](Inputs& all) { return write(all.store, all.memory, ownWriter); }),
        {Baseline{
             timed("object tree",
                   "write/tree",
                   [](Inputs& all) { return write(all.store, all.memory, writeSensorsThroughObjectTree); }),
             Ratio::TimesAsFast,
             2.5},
         Baseline{timed("memcpy of the bytes", "write/memcpy", copyBytes), Ratio::TimesTheTime}}};
}

Comparison compareReading()
{
    return {group,
            "reading",
            milliseconds,
            repetitions,
            timed("read", "read/store", [](Inputs& all) { return read(all.memory, ownReader); }),
            {Baseline{timed("object tree",
                            "read/tree",
                            [](Inputs& all) { return read(all.memory, readSensorsThroughObjectTree); }),
                      Ratio::TimesAsFast,
                      2.5},
             Baseline{
                 timed("from arrays",
                       "read/arrays",
                       [](Inputs& all) { return std::make_shared<SensorData>(storeFromArrays(all.arrays)); }),
                 Ratio::TimesTheTime,
                 1.3},
             Baseline{timed("memcpy of the bytes", "read/memcpy", copyBytes), Ratio::TimesTheTime}}};
}

// Memory, each in a child process of its own

// How much the peak rises while `work` runs behind what `prepare` made.
Subject peak(std::string label, auto prepare, auto work)
{
    auto const measure = [prepare, work] {
        auto prepared = prepare();
        double const before = peakMemory();
        double const added = work(*prepared);
        return peakMemory() - before + added;
    };
    return {std::move(label), [measure] { return inChild(measure); }};
}

struct Frame
{
    // Made in a process of its own, so that making it leaves no mark on this one's peak.
    Frame() : memory(roomForSensors)
    {
        size = inChild([this] {
            SensorData const store = storeFromArrays(recordedArrays());
            return static_cast<double>(write(store, memory.bytes(), ownWriter));
        });
        for (std::size_t i = 0; i < static_cast<std::size_t>(size); i += 4096) {
            char volatile& byte = memory.bytes()[i];
            byte = byte;
        }
    }

    SharedMemory memory;
    double size = 0;
};

Subject peakOfReading(std::string label, auto reader)
{
    return peak(
        std::move(label),
        [] { return std::make_unique<Frame>(); },
        [reader](Frame& frame) {
            auto const store = read(frame.memory.bytes(), reader);
            return 0.0;
        });
}

Subject peakOfWriting(std::string label, auto writer)
{
    struct StoreAndRoom
    {
        SensorData store = storeFromArrays(recordedArrays());
        std::vector<char> room = std::vector<char>(roomForSensors);
    };
    return peak(
        std::move(label),
        [] { return std::make_unique<StoreAndRoom>(); },
        [writer](StoreAndRoom& all) {
            (void)write(all.store, all.room, writer);
            return 0.0;
        });
}

Subject bufferAndStore()
{
    struct FrameAndArrays
    {
        Frame frame;
        SensorArrays arrays = recordedArrays();
    };
    return peak(
        "buffer + store",
        [] { return std::make_unique<FrameAndArrays>(); },
        [](FrameAndArrays& all) {
            SensorData const store = storeFromArrays(all.arrays);
            return all.frame.size;
        });
}

} // namespace

std::vector<Comparison> sensorMemoryBenchmarks()
{
    return {{"Peak memory of a sensor stream of 900,000 samples",
             "writing",
             megabytes,
             1,
             peakOfWriting("write", ownWriter),
             {Baseline{peakOfWriting("object tree", writeSensorsThroughObjectTree), Ratio::TimesTheMemory}}},
            {"Peak memory of a sensor stream of 900,000 samples",
             "reading",
             megabytes,
             1,
             peakOfReading("read", ownReader),
             {Baseline{peakOfReading("object tree", readSensorsThroughObjectTree), Ratio::TimesTheMemory},
              Baseline{bufferAndStore(), Ratio::TimesTheMemory, 1.2}}}};
}

std::vector<Comparison> sensorStreamBenchmarks()
{
    return {compareWriting(), compareReading()};
}

} // namespace bench
