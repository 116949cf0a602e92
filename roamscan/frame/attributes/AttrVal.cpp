#include <roamscan/frame/attributes/AttrVal.h>

#include <utility>

namespace oV
{

template <typename T>
AttrVal<T>::AttrVal(T initial) : value(std::move(initial))
{}

template <typename T>
AttrVal<T>::~AttrVal() = default;

template <typename T>
AttrVal<T>* AttrVal<T>::copy() const
{
    return new AttrVal(*this);
}

template <typename T>
AttrContainer* AttrVal<T>::lookUpLocation(unsigned int) const
{
    return nullptr;
}

template <typename T>
bool AttrVal<T>::setLocation(AttrContainer*)
{
    return false;
}

template class ROAMSCAN_EXPORT_DEFINED_INSTANCE AttrVal<bool>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE AttrVal<int>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE AttrVal<double>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE AttrVal<Bv_1_1::String>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE AttrVal<StringList>;

} // namespace oV
