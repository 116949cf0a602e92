#include <roamscan/frame/attributes/CustAttr.h>

namespace oV
{

template <typename T>
CustAttr<T>::CustAttr(Bv_1_1::BaseNode::CreateType type, Attribute const* source) : Attr<T>(type, source)
{}

template <typename T>
CustAttr<T>::~CustAttr() = default;

template <typename T>
AttrContainer* CustAttr<T>::getLocation(unsigned int) const
{
    return location_;
}

template <typename T>
bool CustAttr<T>::setLocation(AttrContainer* container)
{
    location_ = container;
    return true;
}

template class ROAMSCAN_EXPORT_DEFINED_INSTANCE CustAttr<bool>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE CustAttr<int>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE CustAttr<double>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE CustAttr<Bv_1_1::String>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE CustAttr<StringList>;

} // namespace oV
