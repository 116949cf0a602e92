#pragma once

#include <roamscan/frame/attributes/AttrValueTypes.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

class AttrContainer;

/// The holder of an attribute's value. The order of the virtual operations is part of the binary interface.
template <typename T>
class ROAMSCAN_EXPORT_TEMPLATE AttrVal
{
public:
    /// Holds `initial`.
    explicit AttrVal(T initial);
    AttrVal& operator=(AttrVal const&) = delete;
    virtual ~AttrVal();

    /// A new copy, which the caller must delete.
    [[nodiscard]] virtual AttrVal* copy() const;

    /// The container that was stored by setLocation(). The base class returns null.
    [[nodiscard]] virtual AttrContainer* lookUpLocation(unsigned int token) const;

    /// Stores the container. The base class does nothing and returns false.
    /// @return whether it was stored
    virtual bool setLocation(AttrContainer* container);

    /// The value.
    T value;

protected:
    AttrVal(AttrVal const&) = default;
};

#if ROAMSCAN_DECLARES_INSTANCES
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE AttrVal<bool>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE AttrVal<int>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE AttrVal<double>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE AttrVal<Bv_1_1::String>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE AttrVal<StringList>;
#endif

} // namespace oV
