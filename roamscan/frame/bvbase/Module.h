#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/ImageHandle.h>

#include <mutex>
#include <vector>

namespace Bv_1_1
{

class oVClass;

/// A loaded library as its classes see it. It keeps the records of the classes that belong to it.
///
/// Records may come and go on any thread. Attaching and detaching belong to the thread that loads and
/// unloads.
class ROAMSCAN_EXPORT Module
{
public:
    Module();
    Module(Module const&) = delete;
    Module& operator=(Module const&) = delete;
    ~Module();

    /// The module of this library, made on first use.
    [[nodiscard]] static Module& library();

    /// Attaches the module to the loaded image and calls initClassStatics() on the records entered so far, in
    /// the order of their entry. Attaching again to the same image does nothing. What a record throws passes
    /// through, and the module is not attached then.
    /// @return false for a null handle, or if the module is attached to another image
    [[nodiscard]] bool internalInit(oV::Roamscan::ImageHandle image);

    /// Calls clearClassStatics() on the records, the last entered first, and detaches the module. Does
    /// nothing on a module that is not attached.
    void internalTerm();

    /// Whether the module is attached to an image.
    [[nodiscard]] bool isAttached() const noexcept { return image_ != nullptr; }

    /// The records in the order of their entry.
    [[nodiscard]] std::vector<oVClass const*> classes() const;

private:
    friend class oVClass;

    // Const, as a class knows its module that way; the list is no part of what the module looks like to its
    // classes.
    void enter(oVClass* record) const;
    void withdraw(oVClass* record) const noexcept;
    [[nodiscard]] std::vector<oVClass*> entered() const;

    mutable std::mutex lock_;
    mutable std::vector<oVClass*> classes_; // guarded by lock_
    oV::Roamscan::ImageHandle image_ = nullptr;
};

} // namespace Bv_1_1
