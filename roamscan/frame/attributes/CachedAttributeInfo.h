#pragma once

#include <roamscan/frame/attributes/Attribute.h>
#include <roamscan/frame/bvbase/ObserverInfo.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// The notification record of a pending value. While this thread's flag Attribute::isCachedAttributePending()
/// is set, an attribute with this record returns the value of the cached attribute instead of its own.
///
/// On the cached-value path (ThreadDataType::cachedPathCount), Attr::touch() assigns the pending value to the
/// attribute, and Attr::assignFrom() discards it. Both then remove the record and clear the flag.
///
/// The record holds a reference to the cached attribute, which must not be the attribute that has the record.
class ROAMSCAN_EXPORT CachedAttributeInfo : public Bv_1_1::ObserverInfo
{
public:
    /// @param cachedAttribute the attribute with the pending value, or null
    explicit CachedAttributeInfo(Attribute* cachedAttribute) noexcept;

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();
    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// The attribute with the pending value, or null.
    [[nodiscard]] Attribute* getCachedAttribute() const noexcept { return cachedAttribute_.get(); }

protected:
    ~CachedAttributeInfo() override;

private:
    Bv_1_1::SmartPtr<Attribute> cachedAttribute_;
};

} // namespace oV
