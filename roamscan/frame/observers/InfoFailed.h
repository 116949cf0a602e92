#pragma once

#include <roamscan/frame/bvbase/ObserverInfo.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// The record that refuses a change. An observer that is asked before a change (Observer::toChangeNotify)
/// leaves it at the observed object; the value then stays as it is and the assignment returns false.
class ROAMSCAN_EXPORT InfoFailed : public Bv_1_1::ObserverInfo
{
public:
    InfoFailed() noexcept;

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();
    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

protected:
    ~InfoFailed() override;
};

} // namespace oV
