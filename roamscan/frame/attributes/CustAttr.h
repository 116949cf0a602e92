#pragma once

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// A custom attribute, which is added to a container at run time under a name. It stores its container.
///
/// @note getClassType() returns the class record of Attr<T>, so the type keys in saved files, which are names
///     of class records, are the same for both.
template <typename T>
class ROAMSCAN_EXPORT_TEMPLATE CustAttr : public Attr<T>
{
public:
    /// An attribute with the initial value and without a container.
    /// @param type if it is NoSource, `source` is ignored
    /// @param source the flags are copied from it, but not the value; may be null
    CustAttr(Bv_1_1::BaseNode::CreateType type, Attribute const* source);

    /// The container that was stored by the last setLocation().
    /// @warning A duplicate has the container of its source until it is added to a container itself. This
    ///     pointer dangles after that container is destroyed.
    [[nodiscard]] AttrContainer* getLocation(unsigned int token) const override;
    /// Stores the container, which is not owned. @return true
    bool setLocation(AttrContainer* container) override;

protected:
    ~CustAttr() override;

private:
    AttrContainer* location_ = nullptr; // not owned
};

#if ROAMSCAN_DECLARES_INSTANCES
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE CustAttr<bool>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE CustAttr<int>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE CustAttr<double>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE CustAttr<Bv_1_1::String>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE CustAttr<StringList>;
#endif

} // namespace oV
