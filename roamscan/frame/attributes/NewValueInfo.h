#pragma once

#include <roamscan/frame/attributes/AttrValueTypes.h>
#include <roamscan/frame/bvbase/ObserverInfo.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// The notification record of the proposed value of an attribute. An observer can look it up at the attribute
/// in Observer::toChangeNotify().
template <typename T>
class ROAMSCAN_EXPORT_TEMPLATE NewValueInfo : public Bv_1_1::ObserverInfo
{
public:
    /// @param newValue the proposed value
    explicit NewValueInfo(T newValue);

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();
    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// The proposed value.
    [[nodiscard]] T const& newValue() const noexcept { return newValue_; }

protected:
    ~NewValueInfo() override;

private:
    T newValue_;
};

#if ROAMSCAN_DECLARES_INSTANCES
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE NewValueInfo<bool>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE NewValueInfo<int>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE NewValueInfo<double>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE NewValueInfo<Bv_1_1::String>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE NewValueInfo<StringList>;
#endif

} // namespace oV
