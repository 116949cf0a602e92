#pragma once

#include "tests/tools/support/ToolFixture.h"
#include "tools/io/RecordingFile.h"
#include "tools/simulation/CloudPointWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace support
{

/// Tests of `roamscan place`, with recordings to place.
class PlaceFixture : public ToolFixture
{
protected:
    /// A second of standing still at x = 3, with Device1 two metres above the body, and a small scan of it.
    void writeSmallRecording() const
    {
        oV::Roamscan::TrajectoryData data;
        for (double const time : {100.0, 101.0}) {
            data.nodes.emplace_back(time, oV::Roamscan::TrafoT<double>::Translation({3.0, 0.0, 0.0}));
        }
        data.devicePositions[oV::Roamscan::Device::Device0] = oV::Roamscan::TrafoT<double>::Identity();
        data.devicePositions[oV::Roamscan::Device::Device1] =
            oV::Roamscan::TrafoT<double>::Translation({0.0, 0.0, 2.0});
        data.devicePositions[oV::Roamscan::Device::Device2] =
            oV::Roamscan::TrafoT<double>::Translation({0.0, 10.0, 0.0});
        std::ofstream trajectory(file("a.trajectory"), std::ios::binary);
        oV::Roamscan::tool::writeTrajectory(data, trajectory, "a.trajectory");

        std::ofstream points(file("scan.ply"), std::ios::binary);
        oV::Roamscan::tool::CloudPointWriter writer(points, "scan.ply");
        writer.add({{{1.0F, 0.5F, -1.0F}, 77}, 100.5});
        writer.add({{{1.0F, 0.0F, 0.0F}, 0}, std::nan("")});
        writer.add({{{1.0F, 0.0F, 0.0F}, 0}, 99.9});
        writer.add({{{1.0F, 0.0F, 0.0F}, 0}, 101.1});
        writer.add({{{0.0F, 0.0F, 0.0F}, 0}, 100.5});
        writer.finish();
    }

    /// The points (1, 0, 0) and (2, 0, 0) in one sample of "top" at 100.25 s, the second half a second later,
    /// and (5, 0, 0) in one of "under" at 100.5 s.
    [[nodiscard]] static oV::Roamscan::SensorData smallSensors()
    {
        oV::Roamscan::SensorData data;
        auto const sample = [](double time, std::vector<mapping::TimedRangefinderPoint> points) {
            return std::make_shared<mapping::RangefinderData const>(
                mapping::TimeStamp(time),
                mapping::Vector3<double>(),
                mapping::TimedPointCloud(std::move(points)));
        };
        data.rangefinderData["under"][10'050'000'000] = sample(100.5, {{{5.0F, 0.0F, 0.0F}, 0.0F, {}}});
        data.rangefinderData["top"][10'025'000'000] =
            sample(100.25, {{{1.0F, 0.0F, 0.0F}, 0.0F, {}}, {{2.0F, 0.0F, 0.0F}, 0.5F, {}}});
        data.sensorPoses["top"] = {{0.0F, 0.0F, 2.0F}, {0.0F, 0.0F, 0.0F, 1.0F}};
        return data;
    }

    /// Makes up a walk: a.trajectory, a.sensors, scan.ply and building.json.
    void simulate(std::vector<std::string> const& options) const
    {
        std::vector<std::string> words{"simulate", file("walk"), "--panorama", "0"};
        words.insert(words.end(), options.begin(), options.end());
        ToolRun const simulated = run(words);
        ASSERT_EQ(simulated.status, 0) << simulated.err;
        std::filesystem::rename(file("walk/walk.trajectory"), file("a.trajectory"));
        std::filesystem::rename(file("walk/walk.sensors"), file("a.sensors"));
        std::filesystem::rename(file("walk/scan.ply"), file("scan.ply"));
        std::filesystem::rename(file("walk/building.json"), file("building.json"));
    }

    /// Writes scan.ply as a text with x, y, z and one more property.
    void writeTextScan(std::string const& property, std::vector<std::string> const& lines) const
    {
        std::string text = "ply\nformat ascii 1.0\nelement vertex " + std::to_string(lines.size()) +
                           "\nproperty float x\nproperty float y\nproperty float z\nproperty " + property +
                           "\nend_header\n";
        for (std::string const& line : lines) {
            text += line + '\n';
        }
        write("scan.ply", text);
    }

    void writeSensorStream(oV::Roamscan::SensorData const& data) const
    {
        std::ofstream stream(file("a.sensors"), std::ios::binary);
        oV::Roamscan::tool::writeSensors(data, stream, "a.sensors");
    }

    [[nodiscard]] ToolRun place(std::vector<std::string> const& more, int from = 1, int to = 0) const
    {
        return placeScan({"--points", file("scan.ply")}, more, from, to);
    }

    [[nodiscard]] ToolRun placeSensors(std::vector<std::string> const& more, int from = 1, int to = 0) const
    {
        return placeScan({"--sensors", file("a.sensors")}, more, from, to);
    }

private:
    [[nodiscard]] ToolRun placeScan(std::vector<std::string> const& scan,
                                    std::vector<std::string> const& more,
                                    int from,
                                    int to) const
    {
        std::vector<std::string> words{"place",
                                       "--trajectory",
                                       file("a.trajectory"),
                                       "--from",
                                       std::to_string(from),
                                       "--to",
                                       std::to_string(to)};
        words.insert(words.end(), scan.begin(), scan.end());
        words.insert(words.end(), more.begin(), more.end());
        return run(words);
    }
};

} // namespace support
