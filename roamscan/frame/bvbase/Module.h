#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/ImageHandle.h>

#include <mutex>
#include <vector>

namespace Bv_1_1
{

class oVClass;

/// A shared library that is loaded into the process, with its class records (oVClass).
///
/// Class records may be added and removed on any thread. Only the thread that loads or unloads the library
/// may attach or detach the module.
class ROAMSCAN_EXPORT Module
{
public:
    Module();
    Module(Module const&) = delete;
    Module& operator=(Module const&) = delete;
    ~Module();

    /// The module of this library, created on first use.
    [[nodiscard]] static Module& library();

    /// Attaches the module to a loaded image and calls initClassStatics() on each class record, in the order
    /// of registration. Attaching it to the same image again does nothing.
    /// @return false for a null handle, or if the module is attached to another image
    ///
    /// Exceptions of a class record pass through; the module is not attached then.
    [[nodiscard]] bool internalInit(oV::Roamscan::ImageHandle image);

    /// Calls clearClassStatics() on each class record in reverse order of registration, then detaches the
    /// module. Does nothing if the module is not attached.
    void internalTerm();

    /// Whether the module is attached to an image.
    [[nodiscard]] bool isAttached() const noexcept { return image_ != nullptr; }

    /// The class records in the order of registration.
    [[nodiscard]] std::vector<oVClass const*> classes() const;

private:
    friend class oVClass;

    // Const because a class record holds a reference to a const module.
    ROAMSCAN_NO_EXPORT void enter(oVClass* record) const;
    ROAMSCAN_NO_EXPORT void withdraw(oVClass* record) const noexcept;
    [[nodiscard]] ROAMSCAN_NO_EXPORT std::vector<oVClass*> entered() const;

    mutable std::mutex lock_;
    mutable std::vector<oVClass*> classes_; // guarded by lock_
    oV::Roamscan::ImageHandle image_ = nullptr;
};

} // namespace Bv_1_1
