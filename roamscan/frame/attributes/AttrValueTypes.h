#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/Vec3d.h>

#include <vector>

namespace oV
{

/// The value of a list attribute.
using StringList = std::vector<Bv_1_1::String>;

/// The value of a point attribute, in metres.
using Point = Bv_1_1::Vec3d<double>;

} // namespace oV
