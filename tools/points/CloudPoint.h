#pragma once

#include <roamscan/geometry/IRoamscanData.h>

namespace oV::Roamscan::tool
{

/// One point of a cloud or a scan, in metres.
struct CloudPoint : IRoamscanData::ScanPoint
{
    double time = 0.0; ///< Seconds; NaN for none.
};

} // namespace oV::Roamscan::tool
