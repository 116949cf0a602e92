/// @file
/// Operations on a whole sensor store: the view by time, moving in time, rotating by poses, merging.

#include "Benchmarks.h"
#include "bench/workload/ProcessMemory.h"
#include "bench/workload/SensorArrays.h"
#include "bench/workload/Walk.h"

#include <roamscan/sensors/SensorData.h>
#include <roamscan/time/TimeConversion.h>

#include <tbb/global_control.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace bench
{

namespace
{

using oV::Roamscan::SampleMap;
using oV::Roamscan::SensorData;
using oV::Roamscan::TimeConversion::convertToIntegerTime;
using oV::Roamscan::TimeConversion::convertToSeconds;

constexpr int repetitions = 7;
constexpr char const* group = "Operations on a sensor store";

// Times `act` on what `prepare` makes anew each time, without the making and without what comes after.
Subject timedOn(std::string label, std::string const& name, double items, auto prepare, auto act)
{
    return timedByHand(
        std::move(label), "sensors/" + name, Workload{items}, [prepare, act](benchmark::State& state) {
            for ([[maybe_unused]] auto _ : state) {
                auto prepared = prepare();
                releaseFreeMemory();
                auto const start = std::chrono::steady_clock::now();
                auto const result = act(*prepared);
                auto const stop = std::chrono::steady_clock::now();
                benchmark::DoNotOptimize(&result);
                state.SetIterationTime(std::chrono::duration<double>(stop - start).count());
            }
        });
}

// 300,000 samples of two sensors that interleave.
SensorData const& twoSensors()
{
    static SensorData const store = storeFromArrays(recordedArrays(200'000, 100'000, 20));
    return store;
}

std::unique_ptr<SensorData> copyOfTwoSensors()
{
    return std::make_unique<SensorData>(twoSensors());
}

// The view and the shift written down plainly: every sample is looked up by its key.

using View = std::map<int64, SensorData::TimedData>;

std::shared_ptr<View> viewByLookup(SensorData const& store)
{
    auto view = std::make_shared<View>();
    for (auto const& [name, samples] : store.imuData) {
        for (auto const& [key, record] : samples) {
            (*view)[key].imuData[name] = record;
        }
    }
    for (auto const& [name, samples] : store.rangefinderData) {
        for (auto const& [key, record] : samples) {
            (*view)[key].rangefinderData[name] = record;
        }
    }
    return view;
}

constexpr int64 shift = 12345;

bool shiftByLookup(SensorData& store)
{
    auto const moved = [](mapping::TimeStamp const& time) {
        return mapping::TimeStamp(convertToSeconds(convertToIntegerTime(time.get()) + shift));
    };
    SensorData::Samples<mapping::ImuData> imus;
    for (auto const& [name, samples] : store.imuData) {
        for (auto const& [key, record] : samples) {
            imus[name][key + shift] = std::make_shared<mapping::ImuData const>(
                moved(record->getTimeStamp()), record->getLinearAcceleration(), record->getAngularVelocity());
        }
    }
    SensorData::Samples<mapping::RangefinderData> ranges;
    for (auto const& [name, samples] : store.rangefinderData) {
        for (auto const& [key, record] : samples) {
            ranges[name][key + shift] = std::make_shared<mapping::RangefinderData const>(
                moved(record->getTimeStamp()), record->getOrigin(), record->getRanges());
        }
    }
    store.imuData = std::move(imus);
    store.rangefinderData = std::move(ranges);
    return true;
}

Comparison compareView()
{
    constexpr double items = 300'000;
    return {group,
            "createTimedData, per sample",
            nanoseconds,
            repetitions,
            timedOn("createTimedData",
                    "view/merged",
                    items,
                    copyOfTwoSensors,
                    [](SensorData const& store) { return store.createTimedData(); }),
            {Baseline{timedOn("insertion by key", "view/lookup", items, copyOfTwoSensors, viewByLookup)}}};
}

Comparison compareShift()
{
    constexpr double items = 300'000;
    return {group,
            "modifyTime, per sample",
            nanoseconds,
            repetitions,
            timedOn("modifyTime",
                    "shift/store",
                    items,
                    copyOfTwoSensors,
                    [](SensorData& store) {
                        store.modifyTime([](int64 time) { return time + shift; });
                        return true;
                    }),
            {Baseline{timedOn("insertion by key", "shift/lookup", items, copyOfTwoSensors, shiftByLookup)}}};
}

// Rotating: as many equal range sensors as asked for, of 2,000,000 points in all.

std::unique_ptr<SensorData> equalSensors(int count)
{
    static std::map<int, SensorData> stores;
    if (!stores.contains(count)) {
        SensorData const one =
            storeFromArrays(recordedArrays(0, 100'000 / static_cast<std::size_t>(count), 20));
        for (int i = 0; i < count; ++i) {
            std::string const name = "lidar " + std::to_string(i);
            stores[count].rangefinderData[name] = one.rangefinderData.at("lidar");
            stores[count].sensorPoses[name] = one.sensorPoses.at("lidar");
        }
    }
    return std::make_unique<SensorData>(stores[count]);
}

Comparison compareRotation(int sensors)
{
    auto const onCores = [sensors](std::size_t cores) {
        std::string const coresName = cores == 1 ? "one core" : "two cores";
        return timedOn(
            coresName,
            "poses/" + std::to_string(sensors) + "/" + std::to_string(cores),
            1.0,
            [sensors] { return equalSensors(sensors); },
            [cores](SensorData& store) {
                tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, cores);
                store.applyPoses();
                return true;
            });
    };
    Baseline onOne{onCores(1)};
    if (sensors == 8) {
        onOne.target = 1.6;
    }
    std::string const figure =
        "applyPoses, " + std::to_string(sensors) + (sensors == 1 ? " sensor" : " equal sensors");
    return {group, figure, milliseconds, repetitions, onCores(2), {std::move(onOne)}};
}

// Merging: a million samples in all, in pairs of recordings of a given length, so that every length finds its
// memory as cold as the others do.

struct Recordings
{
    std::vector<std::pair<SensorData, SensorData>> pairs;
};

std::unique_ptr<Recordings> recordings(std::size_t samples, int64 offset, int64 step)
{
    auto const fill = [samples, step](SampleMap<mapping::ScanningStatusData>& map, int64 origin) {
        for (std::size_t i = 0; i < samples; ++i) {
            int64 const key = origin + static_cast<int64>(i) * step;
            map.emplace_hint(map.end(),
                             key,
                             std::make_shared<mapping::ScanningStatusData const>(
                                 mapping::TimeStamp(convertToSeconds(key)), true, false));
        }
    };
    auto made = std::make_unique<Recordings>();
    for (std::size_t i = 0; i < 1'000'000 / samples; ++i) {
        auto& [receiver, other] = made->pairs.emplace_back();
        fill(receiver.scanningStatusData["status"], 0);
        fill(other.scanningStatusData["status"], offset);
    }
    return made;
}

Subject merging(std::size_t samples, bool following)
{
    int64 const step = 10;
    int64 const offset = following ? static_cast<int64>(samples) * step : 5;
    return timedOn(
        withCommas(samples) + " samples",
        std::string("merge/") + (following ? "following/" : "interleaved/") + std::to_string(samples),
        1e6,
        [samples, offset] { return recordings(samples, offset, step); },
        [](Recordings& all) {
            for (auto& [receiver, other] : all.pairs) {
                receiver += other;
            }
            return true;
        });
}

Comparison compareMerging(bool following)
{
    return {group,
            std::string("operator+= of ") + (following ? "a following" : "an interleaved") +
                " recording, per sample",
            nanoseconds,
            repetitions,
            merging(1'000'000, following),
            {Baseline{merging(10'000, following), Ratio::TimesTheTime}}};
}

} // namespace

std::vector<Comparison> sensorOperationsBenchmarks()
{
    return {compareView(),
            compareShift(),
            compareRotation(1),
            compareRotation(2),
            compareRotation(8),
            compareMerging(true),
            compareMerging(false)};
}

} // namespace bench
