#pragma once

#include <roamscan/frame/bvbase/ClassVersion.h>
#include <roamscan/frame/platform/Export.h>

namespace Bv_1_1
{

class BaseNode;
class Module;

/// The class record: run-time information about a class, namely its name, parent, module and version. It is
/// registered in its module from construction to destruction.
///
/// A class that is created through its record, or that has static data to set up, derives its own record from
/// this class. The order of the virtual functions (destructor, create, initClassStatics, clearClassStatics)
/// and the position of the name directly after the pointer to the virtual table are part of the binary
/// interface.
class ROAMSCAN_EXPORT oVClass
{
public:
    /// Registers the class in `module`.
    /// @param name the class name; must outlive the record
    /// @param parent the record of the parent class, null for a root; must outlive the record
    /// @param module the module of the class; must outlive the record
    /// @param version the version of the class
    oVClass(wchar_t const* name, oVClass const* parent, Module const& module, ClassVersion const& version);
    oVClass(oVClass const&) = delete;
    oVClass& operator=(oVClass const&) = delete;
    virtual ~oVClass();

    /// Creates an instance with a reference count of 0.
    /// @return null if the class cannot be created through its record, as in this base class
    [[nodiscard]] virtual BaseNode* create() const;

    /// Sets up the static data of the class. Called when the module is attached. It may be called repeatedly.
    virtual void initClassStatics();

    /// Reverts initClassStatics(). Called when the module is detached. It may be called repeatedly.
    virtual void clearClassStatics();

    /// Whether `other` is this class or one of its direct or indirect base classes.
    [[nodiscard]] bool isDerivedFrom(oVClass const* other) const noexcept
    {
        for (oVClass const* record = this; record != nullptr; record = record->parent_) {
            if (record == other) {
                return true;
            }
        }
        return false;
    }

    /// The name of the class.
    [[nodiscard]] wchar_t const* name() const noexcept { return name_; }
    /// The record of the parent class, or null.
    [[nodiscard]] oVClass const* parent() const noexcept { return parent_; }
    /// The module in which the class is registered.
    [[nodiscard]] Module const& module() const noexcept { return module_; }
    /// The version of the class.
    [[nodiscard]] ClassVersion version() const noexcept { return version_; }

private:
    wchar_t const* name_; // first member: part of the binary interface
    oVClass const* parent_;
    Module const& module_;
    ClassVersion version_;
};

} // namespace Bv_1_1
