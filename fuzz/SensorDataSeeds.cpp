/// @file
/// Writes the seeds of the sensor data target: small valid and invalid streams.

#include "StreamSeeds.h"
#include "tests/support/SensorRecords.h"

#include <roamscan/sensors/SensorData.h>
#include <roamscan/sensors/SensorFile_generated.h>

#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace
{

namespace schema = oV::Roamscan::SensorSchema;
using fuzz::asBuffer;
using fuzz::asStream;
using fuzz::bufferOf;
using fuzz::save;
using fuzz::streamOf;
using oV::Roamscan::SensorData;
using Builder = flatbuffers::FlatBufferBuilder;
using RangeSample = flatbuffers::Offset<schema::RangefinderSample>;

SensorData severalSensors()
{
    SensorData data = support::oneSampleOfEachKind(0.5);
    for (int i = 0; i < 5; ++i) {
        support::store(data.imuData[i % 2 == 0 ? "even" : "odd"], support::imuSample(0.1 * i, {0, 0, 9.81}));
        support::store(data.rangefinderData["lid"],
                       support::rangeSample(0.1 * i, {}, {{{1, 2, 3}, 0.0F, {}}}));
    }
    data.posesApplied = true;
    return data;
}

SensorData withTimes(std::vector<double> const& times)
{
    SensorData data;
    for (double const time : times) {
        auto& samples = data.imuData["imu"];
        samples[static_cast<int64>(samples.size())] = support::imuSample(time, {0, 0, 9.81});
    }
    return data;
}

std::string finished(Builder& builder, std::vector<RangeSample> const& samples)
{
    auto const name = builder.CreateString("lid");
    std::vector const sensors{schema::CreateRangefinderSensor(builder, name, builder.CreateVector(samples))};
    builder.Finish(schema::CreateSensorDataRoot(builder, builder.CreateVector(sensors)));
    return bufferOf(builder);
}

auto pointsOf(Builder& builder, std::size_t count)
{
    return builder.CreateVectorOfStructs(std::vector(count, schema::RangePoint(1.0F, 2.0F, 3.0F, 0.0F)));
}

// A vector whose entries all refer to one table.
std::string sharedSamples(std::size_t count)
{
    Builder builder;
    schema::Vec3f const origin(1.0F, 2.0F, 3.0F);
    auto const sample = schema::CreateRangefinderSample(builder, 0.5, pointsOf(builder, 2), &origin);
    return finished(builder, std::vector(count, sample));
}

// Tables that all refer to one vector of points.
std::string sharedPoints(std::size_t count)
{
    Builder builder;
    schema::Vec3f const origin(1.0F, 2.0F, 3.0F);
    auto const points = pointsOf(builder, count);
    std::vector<RangeSample> samples;
    for (std::size_t i = 0; i < count; ++i) {
        samples.push_back(
            schema::CreateRangefinderSample(builder, 0.5 * static_cast<double>(i), points, &origin));
    }
    return finished(builder, samples);
}

std::string sampleWithoutOrigin()
{
    Builder builder;
    auto const sample = schema::CreateRangefinderSample(builder, 0.5, pointsOf(builder, 2));
    return finished(builder, {sample});
}

void saveAll(std::filesystem::path const& folder)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    std::string const several = streamOf(severalSensors());

    fuzz::saveVariants(folder, streamOf(support::oneSampleOfEachKind(0.5)), several);
    save(folder / "empty-store", asStream, streamOf(SensorData()));
    save(folder / "several-sensors", asStream, several);
    save(folder / "several-sensors-buffer", asBuffer, bufferOf(several));
    save(folder / "special-times",
         asBuffer,
         bufferOf(streamOf(withTimes({nan, infinity, -infinity, 0.0, -0.0, 1e300}))));
    save(folder / "shared-samples", asBuffer, sharedSamples(3));
    save(folder / "shared-points", asBuffer, sharedPoints(60));
    save(folder / "sample-without-origin", asBuffer, sampleWithoutOrigin());
}

} // namespace

int main(int argc, char** argv)
{
    return fuzz::runSeeds(argc, argv, saveAll);
}
