#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

class Attribute;
class Observer;

/// Interface of a listener that is called for every change of any attribute in the process, for example to
/// mark a document as modified. Add it by Attribute::addModifiedListener().
class ROAMSCAN_EXPORT ModifiedListener : public Bv_1_1::BaseNode
{
public:
    /// Called just before a different value is stored, on the thread that makes the change.
    /// @param attribute the attribute, which still has its old value
    /// @param observer the object that makes the change; may be null
    /// @param parameter the argument of Attr::assignFrom(); may be null
    virtual void attributeModified(Attribute& attribute, Observer* observer, void* parameter) = 0;

protected:
    ModifiedListener() noexcept;
    ~ModifiedListener() override;
};

} // namespace oV
