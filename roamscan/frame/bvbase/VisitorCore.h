#pragma once

#include <roamscan/frame/platform/Export.h>

namespace Bv_1_1
{

/// The base class of BaseNode. It has no members of its own and is not used directly.
class ROAMSCAN_EXPORT VisitorCore
{
protected:
    VisitorCore() = default;
    VisitorCore(VisitorCore const&) = default;
    VisitorCore& operator=(VisitorCore const&) = default;
    ~VisitorCore() = default;
};

} // namespace Bv_1_1
