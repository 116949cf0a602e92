#pragma once

#include <roamscan/frame/platform/Export.h>

namespace Bv_1_1
{

/// The root under BaseNode. It has nothing of its own and is never used by itself.
class ROAMSCAN_EXPORT VisitorCore
{
protected:
    VisitorCore() = default;
    VisitorCore(VisitorCore const&) = default;
    VisitorCore& operator=(VisitorCore const&) = default;
    ~VisitorCore() = default;
};

} // namespace Bv_1_1
