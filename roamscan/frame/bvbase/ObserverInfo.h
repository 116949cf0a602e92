#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/platform/Export.h>

namespace Bv_1_1
{

/// The base of notification records. During a notification, the observed object holds records with data about
/// the change, and observers may add a record as an answer. oV::Observer::lookupNotifyInfo() finds a record
/// by its class.
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
