#include <roamscan/frame/platform/detail/Rounding.h>
#include <roamscan/frame/values/LinearInterpolatedFunctionT.h>
#include <roamscan/geometry/ToleranceThresholds.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <optional>
#include <stdexcept>
#include <utility>

namespace oV::Roamscan
{

namespace
{

using ThresholdName = ToleranceThresholds::ThresholdName;
using Thresholds = std::map<ThresholdName, double>;

constexpr double binsPerUnit = 100.0;

// Nothing for NaN and for distances beyond the range of `int`, whose conversion would be undefined.
std::optional<int> binOf(double distance)
{
    double const bin = oV::detail::roundHalfAway(distance * binsPerUnit);
    if (!(std::abs(bin) <= std::numeric_limits<int>::max())) {
        return std::nullopt;
    }
    return static_cast<int>(bin);
}

// NaN propagates: the bound is unknown once one of the angles is.
double larger(double bound, double angle)
{
    return bound >= angle || std::isnan(bound) ? bound : angle;
}

double smaller(double bound, double angle)
{
    return bound <= angle || std::isnan(bound) ? bound : angle;
}

double polarAngleOf(ToleranceThresholds::Vector const& point)
{
    double const theta = std::acos(point.z() / point.norm());
    // acos never exceeds pi; kept so that the range does not depend on it.
    return theta > std::numbers::pi ? 2 * std::numbers::pi - theta : theta;
}

double valueOf(Thresholds const& thresholds, ThresholdName name)
{
    auto const value = thresholds.find(name);
    if (value == thresholds.end()) {
        throw std::out_of_range("invalid map<K, T> key");
    }
    return value->second;
}

} // namespace

ToleranceThresholds::ToleranceThresholds(std::vector<TrafoT<double>> const& trafos,
                                         std::vector<Vector> const& points)
{
    calculateThresholds(trafos, points);
}

ToleranceThresholds::ToleranceThresholds(ToleranceThresholds const& other) = default;

ToleranceThresholds::~ToleranceThresholds() = default;

ToleranceThresholds& ToleranceThresholds::operator=(ToleranceThresholds const& other) = default;

double ToleranceThresholds::getThreshold(ThresholdName name, double distance)
{
    if (table_.empty()) {
        throw std::out_of_range("Cannot look up a tolerance threshold in an empty table");
    }
    std::optional<int> const bin = binOf(distance);
    auto entry = table_.begin();
    if (bin) {
        entry = table_.lower_bound(*bin);
    } else if (distance > 0.0) {
        entry = table_.end();
    }
    // The entry before it, even if this one is the bin of the distance itself. The lag of one bin is kept for
    // compatibility: tolerances in use were chosen with it.
    if (entry != table_.begin()) {
        --entry;
    }
    return entry->second[name];
}

void ToleranceThresholds::calculateThresholds(std::vector<TrafoT<double>> const& trafos,
                                              std::vector<Vector> const& points)
{
    for (Vector const& point : points) {
        calculateThresholdsForPoint(trafos, point);
    }
    if (table_.empty()) {
        return;
    }
    // Outside the first and the last sampled bin there are no values. 64 bits, so that the counter can pass
    // the largest bin.
    std::int64_t const firstBin = table_.begin()->first;
    std::int64_t const lastBin = table_.rbegin()->first;
    double const extent = points.back().norm() * binsPerUnit;

    decltype(table_) dense;
    for (ThresholdName const name : {MaxPhi, MinPhi, MaxTheta, MinTheta}) {
        LinearInterpolatedFunctionT<double> function;
        for (auto const& [bin, thresholds] : table_) {
            function.addSample(bin, valueOf(thresholds, name));
        }
        for (std::int64_t bin = firstBin; bin <= lastBin && static_cast<double>(bin) < extent; ++bin) {
            double value = 0.0;
            if (function.evaluateAt(static_cast<double>(bin), value)) {
                dense[static_cast<int>(bin)][name] = value;
            }
        }
    }
    table_ = std::move(dense);
}

void ToleranceThresholds::calculateThresholdsForPoint(std::vector<TrafoT<double>> const& trafos,
                                                      Vector const& point)
{
    std::optional<int> const bin = binOf(point.norm());
    if (!bin) {
        return;
    }
    double maxPhi = -1000.0;
    double minPhi = 1000.0;
    double maxTheta = -1000.0;
    double minTheta = 1000.0;
    for (TrafoT<double> const& trafo : trafos) {
        Vector const seen = trafo.inverse() * point;
        double const theta = polarAngleOf(seen);
        double const phi = std::atan2(seen.y(), seen.x());
        maxPhi = larger(maxPhi, phi);
        minPhi = smaller(minPhi, phi);
        maxTheta = larger(maxTheta, theta);
        minTheta = smaller(minTheta, theta);
    }
    table_[*bin] = {{MaxPhi, maxPhi}, {MinPhi, minPhi}, {MaxTheta, maxTheta}, {MinTheta, minTheta}};
}

} // namespace oV::Roamscan
