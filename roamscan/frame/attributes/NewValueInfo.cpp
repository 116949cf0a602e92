#include <roamscan/frame/attributes/NewValueInfo.h>
#include <roamscan/frame/attributes/detail/ValueNames.h>
#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/oVClass.h>

#include <utility>

namespace oV
{

template <typename T>
NewValueInfo<T>::NewValueInfo(T newValue) : newValue_(std::move(newValue))
{}

template <typename T>
NewValueInfo<T>::~NewValueInfo() = default;

template <typename T>
Bv_1_1::oVClass const* NewValueInfo<T>::Class()
{
    static Bv_1_1::oVClass const record(detail::ValueNames<T>::newValueInfo,
                                        ObserverInfo::Class(),
                                        Bv_1_1::Module::library(),
                                        Bv_1_1::ClassVersion{0});
    return &record;
}

template <typename T>
Bv_1_1::oVClass const* NewValueInfo<T>::getClassType() const
{
    return Class();
}

template class ROAMSCAN_EXPORT_DEFINED_INSTANCE NewValueInfo<bool>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE NewValueInfo<int>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE NewValueInfo<double>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE NewValueInfo<Bv_1_1::String>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE NewValueInfo<StringList>;

} // namespace oV
