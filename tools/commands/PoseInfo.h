#pragma once

#include "tools/console/Text.h"

#include <roamscan/time/TrafoT.h>

#include <nlohmann/json.hpp>

#include <string>

namespace oV::Roamscan::tool
{

/// "translation x y z m, rotation (w x y z) w x y z"
[[nodiscard]] inline std::string poseInWords(TrafoT<double> const& pose)
{
    auto const [x, y, z, qw, qx, qy, qz] = pose.serialize();
    return "translation " + fixed(x, 6) + ' ' + fixed(y, 6) + ' ' + fixed(z, 6) + " m, rotation (w x y z) " +
           fixed(qw, 6) + ' ' + fixed(qx, 6) + ' ' + fixed(qy, 6) + ' ' + fixed(qz, 6);
}

/// Adds "translation" [x, y, z] and "rotation" [w, x, y, z].
inline void addPose(nlohmann::ordered_json& json, TrafoT<double> const& pose)
{
    auto const [x, y, z, qw, qx, qy, qz] = pose.serialize();
    json["translation"] = {x, y, z};
    json["rotation"] = {qw, qx, qy, qz};
}

} // namespace oV::Roamscan::tool
