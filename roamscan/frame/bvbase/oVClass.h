#pragma once

#include <roamscan/frame/bvbase/ClassVersion.h>
#include <roamscan/frame/platform/Export.h>

namespace Bv_1_1
{

class BaseNode;
class Module;

/// The record of a class: its name, its parent, the module it belongs to and its version. A record is entered
/// in its module for as long as it lives.
///
/// Classes that can be made from their record, or that have something to set up, derive from this one. The
/// order of the virtual operations (destructor, create, initClassStatics, clearClassStatics) is part of the
/// binary interface, and so is the name's place directly behind the table of operations.
class ROAMSCAN_EXPORT oVClass
{
public:
    /// Enters the class. `name`, `parent` (null for a root) and `module` must outlive the record.
    oVClass(wchar_t const* name, oVClass const* parent, Module const& module, ClassVersion const& version);
    oVClass(oVClass const&) = delete;
    oVClass& operator=(oVClass const&) = delete;
    virtual ~oVClass();

    /// A new instance without a reference, or null for a class that is not made this way; here always null.
    [[nodiscard]] virtual BaseNode* create() const;

    /// Sets up what the class shares among its instances. Called when the module is attached; may be called
    /// again.
    virtual void initClassStatics();

    /// Undoes initClassStatics(). Called when the module is detached; may be called again.
    virtual void clearClassStatics();

    /// Whether `other` is this class or one that it derives from.
    [[nodiscard]] bool isDerivedFrom(oVClass const* other) const noexcept;

    /// The name of the class.
    [[nodiscard]] wchar_t const* name() const noexcept { return name_; }
    /// The record of the parent class, or null.
    [[nodiscard]] oVClass const* parent() const noexcept { return parent_; }
    /// Where the record is entered.
    [[nodiscard]] Module const& module() const noexcept { return module_; }
    /// The version of the class.
    [[nodiscard]] ClassVersion version() const noexcept { return version_; }

private:
    wchar_t const* name_; // first: code outside reads it behind the table of operations
    oVClass const* parent_;
    Module const& module_;
    ClassVersion version_;
};

} // namespace Bv_1_1
