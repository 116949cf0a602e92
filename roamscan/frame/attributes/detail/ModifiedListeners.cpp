#include <roamscan/frame/attributes/detail/ModifiedListeners.h>

#include <algorithm>
#include <utility>

namespace oV::detail
{

ModifiedListeners& ModifiedListeners::the()
{
    static ModifiedListeners listeners;
    return listeners;
}

void ModifiedListeners::add(ModifiedListener* listener)
{
    if (listener != nullptr) {
        std::lock_guard const guard(lock_);
        listeners_.emplace_back(listener);
        any_.store(true, std::memory_order_release);
    }
}

bool ModifiedListeners::remove(ModifiedListener const* listener)
{
    Bv_1_1::SmartPtr<ModifiedListener> removed; // destroyed after the lock is released
    std::lock_guard const guard(lock_);
    auto const place = std::find(listeners_.begin(), listeners_.end(), listener);
    if (place == listeners_.end()) {
        return false;
    }
    removed = std::move(*place);
    listeners_.erase(place);
    any_.store(!listeners_.empty(), std::memory_order_release);
    return true;
}

void ModifiedListeners::inform(Attribute& attribute, Observer* observer, void* parameter)
{
    std::unique_lock guard(lock_);
    auto const listeners = listeners_;
    guard.unlock();
    for (auto const& listener : listeners) {
        listener->attributeModified(attribute, observer, parameter);
    }
}

} // namespace oV::detail
