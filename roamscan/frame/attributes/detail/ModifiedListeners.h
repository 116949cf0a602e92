#pragma once

#include <roamscan/frame/attributes/ModifiedListener.h>
#include <roamscan/frame/bvbase/SmartPtr.h>

#include <atomic>
#include <mutex>
#include <vector>

namespace oV::detail
{

/// The modified listeners of the process. Thread-safe. No lock is held while listeners are called, so they
/// may add and remove listeners and change attributes.
class ModifiedListeners
{
public:
    [[nodiscard]] static ModifiedListeners& the();

    [[nodiscard]] bool any() const noexcept { return any_.load(std::memory_order_acquire); }
    void add(ModifiedListener* listener);
    bool remove(ModifiedListener const* listener);
    void inform(Attribute& attribute, Observer* observer, void* parameter);

private:
    std::mutex lock_;
    std::vector<Bv_1_1::SmartPtr<ModifiedListener>> listeners_; // guarded by lock_
    std::atomic<bool> any_ = false;                             // changed under lock_
};

} // namespace oV::detail
