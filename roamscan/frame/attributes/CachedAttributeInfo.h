#pragma once

#include <roamscan/frame/attributes/Attribute.h>
#include <roamscan/frame/bvbase/ObserverInfo.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// The record of a pending value: while the thread's pending flag is set
/// (Attribute::isCachedAttributePending), the attribute that has this record reads as the cached attribute.
///
/// The record holds a reference on the cached attribute, which must not be the attribute that it is left at.
class ROAMSCAN_EXPORT CachedAttributeInfo : public Bv_1_1::ObserverInfo
{
public:
    /// @param cachedAttribute has the pending value; null for none
    explicit CachedAttributeInfo(Attribute* cachedAttribute) noexcept;

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();
    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// The attribute that has the pending value, or null.
    [[nodiscard]] Attribute* getCachedAttribute() const noexcept { return cachedAttribute_.get(); }

protected:
    ~CachedAttributeInfo() override;

private:
    Bv_1_1::SmartPtr<Attribute> cachedAttribute_;
};

} // namespace oV
