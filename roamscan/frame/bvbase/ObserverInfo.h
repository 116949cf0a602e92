#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/platform/Export.h>

namespace Bv_1_1
{

/// The base of notification records: what an observed object wants its observers to know about a change, and
/// what an observer answers. Records are found by their class (oV::Observer::lookupNotifyInfo).
class ROAMSCAN_EXPORT ObserverInfo : public BaseNode
{
public:
    /// The record of this class.
    [[nodiscard]] static oVClass const* Class();
    [[nodiscard]] oVClass const* getClassType() const override;

protected:
    ObserverInfo() noexcept = default;
    ~ObserverInfo() override;
};

} // namespace Bv_1_1
