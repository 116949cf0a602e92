#pragma once

#include <roamscan/frame/bvbase/ObserverInfo.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// The notification record that vetoes a change. In Observer::toChangeNotify(), an observer adds it to the
/// subject by addNotifyInfo(). The value is then not changed, and the assignment returns false.
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
