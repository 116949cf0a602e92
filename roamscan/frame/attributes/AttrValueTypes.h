#pragma once

#include <roamscan/frame/bvbase/String.h>

#include <vector>

namespace oV
{

/// The value of a list attribute.
using StringList = std::vector<Bv_1_1::String>;

} // namespace oV
