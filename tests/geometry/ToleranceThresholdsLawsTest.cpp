/// @file
/// ToleranceThresholds against a naive reference.

#include "tests/support/RandomPoses.h"

#include <roamscan/geometry/ToleranceThresholds.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <stdexcept>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using Name = ToleranceThresholds::ThresholdName;

using Vector = Eigen::Matrix<double, 3, 1>;
using Poses = std::vector<TrafoT<double>>;
using Points = std::vector<Vector>;

constexpr std::array<Name, 4> allNames = {Name::MaxPhi, Name::MinPhi, Name::MaxTheta, Name::MinTheta};

// Reference: the bounds by rotation matrices, for every bin.
struct ReferenceThresholds
{
    ReferenceThresholds(Poses const& poses, Points const& points)
    {
        std::map<int, std::array<double, 4>> samples;
        for (Vector const& point : points) {
            std::array<double, 4> bounds = {-1000, 1000, -1000, 1000};
            for (auto const& pose : poses) {
                Vector const q =
                    pose.rotation().toRotationMatrix().transpose() * (point - pose.translation());
                double const phi = std::atan2(q.y(), q.x());
                double const theta = std::atan2(std::hypot(q.x(), q.y()), q.z());
                bounds = {std::max(bounds[0], phi),
                          std::min(bounds[1], phi),
                          std::max(bounds[2], theta),
                          std::min(bounds[3], theta)};
            }
            samples[static_cast<int>(std::round(point.norm() * 100))] = bounds;
        }
        for (int bin = 0; bin < points.back().norm() * 100; ++bin) {
            auto const upper = samples.lower_bound(bin);
            if (upper == samples.end() || (upper == samples.begin() && upper->first != bin)) {
                continue;
            }
            auto const lower = upper->first == bin ? upper : std::prev(upper);
            double const f = upper == lower ? 0
                                            : static_cast<double>(bin - lower->first) /
                                                  static_cast<double>(upper->first - lower->first);
            for (std::size_t i = 0; i < 4; ++i) {
                table[bin][i] = lower->second[i] + (upper->second[i] - lower->second[i]) * f;
            }
        }
    }

    [[nodiscard]] double get(Name name, int bin) const
    {
        auto const found = table.lower_bound(bin);
        auto const entry = found == table.begin() ? found : std::prev(found);
        return entry->second[static_cast<std::size_t>(name)];
    }

    std::map<int, std::array<double, 4>> table;
};

TEST(ToleranceThresholdsLaws, EqualTheReferenceForRandomPosesAndPoints)
{
    for (std::uint64_t seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        support::RandomPoses random(seed);
        Poses poses;
        for (int i = 0; i < 5; ++i) {
            poses.push_back(random.pose(0.3));
        }
        Points points;
        for (int i = 0; i < 8; ++i) {
            Vector const direction(random.number(-1, 1), random.number(-1, 1), random.number(-1, 1));
            points.emplace_back(direction.normalized() * random.number(0.5, 3));
        }
        if (seed % 2 == 0) {
            std::sort(points.begin(), points.end(), [](Vector const& a, Vector const& b) {
                return a.norm() < b.norm();
            });
        }
        ReferenceThresholds const expected(poses, points);
        ToleranceThresholds actual(poses, points);
        if (expected.table.empty()) {
            EXPECT_THROW((void)actual.getThreshold(Name::MaxPhi, 1), std::out_of_range);
            continue;
        }
        for (int bin = 0; bin < 320; ++bin) {
            for (Name const name : allNames) {
                ASSERT_NEAR(actual.getThreshold(name, bin / 100.0), expected.get(name, bin), 1e-12) << bin;
            }
        }
    }
}

} // namespace
