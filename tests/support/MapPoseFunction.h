#pragma once

#include <roamscan/time/TimeStamp.h>
#include <roamscan/time/TrafoT.h>

#include <cmath>
#include <iterator>
#include <map>
#include <stdexcept>

namespace support
{

/// A naive pose function on a std::map, as the reference for tables of poses.
struct MapPoseFunction
{
    std::map<oV::Roamscan::TimeStamp, oV::Roamscan::TrafoT<double>> poses;

    oV::Roamscan::TrafoT<double> operator()(double t) const
    {
        if (poses.empty()) {
            throw std::out_of_range("Cannot query transformation from an empty trajectory");
        }
        auto const upper = std::isnan(t) ? poses.begin() : poses.upper_bound(oV::Roamscan::TimeStamp(t));
        if (upper == poses.end()) {
            auto const& [lastKey, lastPose] = *poses.rbegin();
            if (std::round((t - lastKey.get()) * 100000.0) == 0.0) {
                return lastPose;
            }
            throw std::out_of_range("Time point past the trajectory end");
        }
        if (upper == poses.begin()) {
            throw std::out_of_range("Time point before the trajectory begin");
        }
        auto const lower = std::prev(upper);
        double const f = (t - lower->first.get()) / (upper->first.get() - lower->first.get());
        return lower->second.interpolate(upper->second, f);
    }
};

} // namespace support
