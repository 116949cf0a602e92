#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

class Attribute;
class Observer;

/// Hears of every change to any attribute of the process, for instance to mark a document as modified
/// (Attribute::addModifiedListener).
class ROAMSCAN_EXPORT ModifiedListener : public Bv_1_1::BaseNode
{
public:
    /// Called just before a different value is stored, on the thread that makes the change.
    /// @param attribute still has its old value
    /// @param observer who makes the change; may be null
    /// @param parameter what the caller gave with the change; may be null
    virtual void attributeModified(Attribute& attribute, Observer* observer, void* parameter) = 0;

protected:
    ModifiedListener() noexcept;
    ~ModifiedListener() override;
};

} // namespace oV
