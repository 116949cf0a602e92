#pragma once

#include "tools/console/JsonText.h"
#include "tools/console/Text.h"

#include <roamscan/time/TrafoT.h>

#include <string>

namespace oV::Roamscan::tool
{

/// An object with "translation" [x, y, z] and "rotation" [w, x, y, z].
[[nodiscard]] inline Json describe(TrafoT<double> const& pose)
{
    auto const [x, y, z, qw, qx, qy, qz] = pose.serialize();
    return {{"translation", {x, y, z}}, {"rotation", {qw, qx, qy, qz}}};
}

/// "translation x y z m, rotation (w x y z) w x y z", from the object of a pose.
[[nodiscard]] inline std::string poseText(Json const& pose)
{
    std::string text = "translation";
    for (double const number : pose.at("translation")) {
        text += ' ' + fixed(number, 6);
    }
    text += " m, rotation (w x y z)";
    for (double const number : pose.at("rotation")) {
        text += ' ' + fixed(number, 6);
    }
    return text;
}

} // namespace oV::Roamscan::tool
