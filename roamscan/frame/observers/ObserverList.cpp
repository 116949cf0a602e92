#include <roamscan/frame/observers/ObserverList.h>

#include <algorithm>

namespace oV
{

bool ObserverList::add(Observer* observer)
{
    if (observer == nullptr || contains(observer)) {
        return false;
    }
    entries_.push_back(observer);
    ++count_;
    return true;
}

bool ObserverList::remove(Observer const* observer) noexcept
{
    auto const place = std::find(entries_.begin(), entries_.end(), observer);
    if (observer == nullptr || place == entries_.end()) {
        return false;
    }
    if (visits_ != 0) {
        *place = nullptr;
    } else {
        entries_.erase(place);
    }
    --count_;
    return true;
}

bool ObserverList::contains(Observer const* observer) const noexcept
{
    return observer != nullptr && std::find(entries_.begin(), entries_.end(), observer) != entries_.end();
}

} // namespace oV
