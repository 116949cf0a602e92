#pragma once

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// A custom attribute: one that is added to a container at run time under a name, and knows its container.
///
/// @note It reports the class record of Attr<T>. Saved type keys are names of class records, so this is what
/// lets them stand for custom attributes.
template <typename T>
class ROAMSCAN_EXPORT CustAttr : public Attr<T>
{
public:
    /// Starts with the initial value and without a location.
    /// @param source where the flag word comes from, unless it is null or the type is NoSource
    CustAttr(Bv_1_1::BaseNode::CreateType type, Attribute const* source);

    /// What setLocation() was given last.
    /// @warning A duplicate has the location of its source before any container has it. The container does
    /// not know of that, so the pointer must not be used once the container is gone.
    [[nodiscard]] AttrContainer* getLocation(unsigned int token) const override;
    /// Stores the container, which stays not owned. @return true
    bool setLocation(AttrContainer* container) override;

protected:
    ~CustAttr() override;

private:
    AttrContainer* location_ = nullptr; // not owned
};

extern template class ROAMSCAN_EXPORT CustAttr<bool>;
extern template class ROAMSCAN_EXPORT CustAttr<int>;
extern template class ROAMSCAN_EXPORT CustAttr<double>;
extern template class ROAMSCAN_EXPORT CustAttr<Bv_1_1::String>;
extern template class ROAMSCAN_EXPORT CustAttr<StringList>;

} // namespace oV
