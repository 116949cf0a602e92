/// @file
/// Operations on a whole sensor store: the view by time, moving in time, rotating by poses, merging.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/workload/SensorArrays.h"
#include "bench/workload/Walk.h"
#include "tests/support/SensorRecords.h"

#include <roamscan/sensors/SensorData.h>
#include <roamscan/time/TimeConversion.h>

#include <tbb/global_control.h>

#include <map>
#include <utility>

namespace bench
{

namespace
{

using oV::Roamscan::SampleMap;
using oV::Roamscan::SensorData;

// 300,000 samples of two sensors whose times interleave.
constexpr std::int64_t viewedSamples = 300'000;

SensorData twoSensors()
{
    static SensorData const store = storeFromArrays(recordedArrays(200'000, 100'000, 20));
    return store;
}

template <auto operation>
void onTwoSensors(benchmark::State& state)
{
    timeEach(state, twoSensors, operation);
    state.SetItemsProcessed(state.iterations() * viewedSamples);
}

// The view and the shift, implemented plainly: each sample is looked up by its key.

auto viewByLookup(SensorData const& store)
{
    std::map<int64, SensorData::TimedData> view;
    auto const insert = [&view](auto const& sensors, auto kind) {
        for (auto const& [name, samples] : sensors) {
            for (auto const& [key, record] : samples) {
                (view[key].*kind)[name] = record;
            }
        }
    };
    insert(store.imuData, &SensorData::TimedData::imuData);
    insert(store.rangefinderData, &SensorData::TimedData::rangefinderData);
    return view;
}

constexpr int64 shift = 12345; // ticks

// Inserts each sample under its moved key; `makeMoved` makes a record with another time.
template <typename T>
void shiftByLookup(SensorData::Samples<T>& sensors, auto const& makeMoved)
{
    using namespace oV::Roamscan::TimeConversion;
    SensorData::Samples<T> moved;
    for (auto const& [name, samples] : sensors) {
        for (auto const& [key, record] : samples) {
            double const time = convertToSeconds(convertToIntegerTime(record->getTimeStamp().get()) + shift);
            moved[name][key + shift] = makeMoved(*record, time);
        }
    }
    sensors = std::move(moved);
}

bool shiftAllByLookup(SensorData& store)
{
    shiftByLookup(store.imuData, [](mapping::ImuData const& record, double time) {
        return support::imuSample(time, record.getLinearAcceleration(), record.getAngularVelocity());
    });
    shiftByLookup(store.rangefinderData, [](mapping::RangefinderData const& record, double time) {
        return support::rangeSample(time, record.getOrigin(), record.getRanges().get());
    });
    return true;
}

auto view(SensorData const& store)
{
    return store.createTimedData();
}

bool shiftAll(SensorData& store)
{
    store.modifyTime([](int64 time) { return time + shift; });
    return true;
}

// Range sensors with 2,000,000 points in total, the same number each.
struct EqualSensors
{
    explicit EqualSensors(std::size_t count)
    {
        SensorData const one = storeFromArrays(recordedArrays(0, 100'000 / count, 20));
        for (std::size_t i = 0; i < count; ++i) {
            std::string const name = "lidar " + std::to_string(i);
            store.rangefinderData[name] = one.rangefinderData.at("lidar");
            store.sensorPoses[name] = one.sensorPoses.at("lidar");
        }
    }

    SensorData store;
};

bool rotate(SensorData& store)
{
    store.applyPoses();
    return true;
}

template <std::size_t sensors, std::size_t cores>
void rotation(benchmark::State& state)
{
    auto const& store = inputFor<EqualSensors>(sensors).store;
    tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, cores);
    timeEach(
        state, [&store] { return store; }, rotate);
}

template <std::size_t sensors>
Figure rotationFigure(std::optional<double> target = std::nullopt)
{
    return {"applyPoses, " + std::to_string(sensors) + (sensors == 1 ? " sensor" : " equal sensors"),
            milliseconds,
            {"two cores", rotation<sensors, 2>},
            {{"one core", rotation<sensors, 1>, timesAsFast, target}}};
}

// Merging: a million samples in total, in pairs of recordings of a given length. So the cache is as cold for
// short recordings as for long ones.

constexpr std::size_t mergedSamples = 1'000'000;
using Recordings = std::vector<std::pair<SensorData, SensorData>>;

template <std::size_t samples, bool following>
Recordings recordings()
{
    constexpr int64 step = 10;
    auto const fill = [](SampleMap<mapping::ScanningStatusData>& map, int64 origin) {
        for (std::size_t i = 0; i < samples; ++i) {
            int64 const key = origin + static_cast<int64>(i) * step;
            map.emplace_hint(map.end(), key, support::statusSample(support::secondsOf(key)));
        }
    };
    Recordings pairs(mergedSamples / samples);
    for (auto& [receiver, other] : pairs) {
        fill(receiver.scanningStatusData["status"], 0);
        fill(other.scanningStatusData["status"], following ? static_cast<int64>(samples) * step : step / 2);
    }
    return pairs;
}

bool merge(Recordings& pairs)
{
    for (auto& [receiver, other] : pairs) {
        receiver += other;
    }
    return true;
}

template <std::size_t samples, bool following>
void merging(benchmark::State& state)
{
    timeEach(state, recordings<samples, following>, merge);
    state.SetItemsProcessed(state.iterations() * std::int64_t{mergedSamples});
}

template <bool following>
Figure mergingFigure(std::string const& recording)
{
    return {"operator+= of " + recording + " recording, per sample",
            nanoseconds,
            {"1,000,000 samples", merging<1'000'000, following>},
            {{"10,000 samples", merging<10'000, following>, timesTheTime}}};
}

} // namespace

Group sensorOperations()
{
    return {"Operations on a sensor store",
            Cost::ReportedTime,
            {{"createTimedData, per sample",
              nanoseconds,
              {"createTimedData", onTwoSensors<view>},
              {{"insertion by key", onTwoSensors<viewByLookup>}}},
             {"modifyTime, per sample",
              nanoseconds,
              {"modifyTime", onTwoSensors<shiftAll>},
              {{"insertion by key", onTwoSensors<shiftAllByLookup>}}},
             rotationFigure<1>(),
             rotationFigure<2>(),
             rotationFigure<8>(1.6),
             mergingFigure<true>("a following"),
             mergingFigure<false>("an interleaved")}};
}

} // namespace bench
