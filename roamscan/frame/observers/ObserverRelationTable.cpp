#include <roamscan/frame/observers/ObserverRelationTable.h>

namespace oV
{

namespace
{

template <typename Value>
Value* lookUp(std::unordered_map<Observer const*, Value*> const& map, Observer const* key)
{
    auto const found = map.find(key);
    return found == map.end() ? nullptr : found->second;
}

} // namespace

void ObserverRelationTable::enter(Observer const* source, Observer* copy)
{
    if (source == nullptr || copy == nullptr) {
        return;
    }
    forget(copy);
    if (Observer const* const former = copyOf(source)) {
        sources_.erase(former);
    }
    sources_[copy] = source;
    copies_[source] = copy;
}

Observer* ObserverRelationTable::copyOf(Observer const* source) const
{
    return lookUp(copies_, source);
}

Observer const* ObserverRelationTable::sourceOf(Observer const* copy) const
{
    return lookUp(sources_, copy);
}

void ObserverRelationTable::forget(Observer const* observer) noexcept
{
    if (Observer const* const copy = copyOf(observer)) {
        sources_.erase(copy);
        copies_.erase(observer);
    }
    if (Observer const* const source = sourceOf(observer)) {
        copies_.erase(source);
        sources_.erase(observer);
    }
}

void ObserverRelationTable::clearTable() noexcept
{
    copies_.clear();
    sources_.clear();
}

} // namespace oV
