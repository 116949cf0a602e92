#pragma once

#include <roamscan/frame/platform/Export.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace oV
{

class Observer;

/// A list of observers in the order in which they were added, without duplicates. The list does not own them.
///
/// The list may change during a visit: removed observers are no longer visited, and added ones are not
/// visited until the next visit.
class ROAMSCAN_EXPORT ObserverList
{
public:
    ObserverList() = default;
    ObserverList(ObserverList const&) = delete;
    ObserverList& operator=(ObserverList const&) = delete;
    ~ObserverList() = default;

    /// Appends an observer.
    /// @return false if it is already in the list
    bool add(Observer* observer);

    /// Removes an observer.
    /// @return false if it is not in the list
    bool remove(Observer const* observer) noexcept;

    /// Whether the observer is in the list.
    [[nodiscard]] bool contains(Observer const* observer) const noexcept;
    /// The number of observers.
    [[nodiscard]] std::size_t size() const noexcept { return count_; }
    /// Whether the list has no observers.
    [[nodiscard]] bool empty() const noexcept { return count_ == 0; }

    /// Calls `call(Observer&)` for each observer, in order. Exceptions of `call` pass through.
    template <typename Call>
    void visit(Call&& call)
    {
        Visit const scope(*this);
        std::size_t const end = entries_.size();
        for (std::size_t i = 0; i < end; ++i) {
            if (Observer* const observer = entries_[i]) {
                call(*observer);
            }
        }
    }

private:
    // During visits, entries are not moved, and removed entries are set to null. The end of the last visit
    // erases them.
    class Visit
    {
    public:
        explicit Visit(ObserverList& list) noexcept : list_(list) { ++list_.visits_; }
        Visit(Visit const&) = delete;
        Visit& operator=(Visit const&) = delete;
        ~Visit()
        {
            if (--list_.visits_ == 0 && list_.count_ != list_.entries_.size()) {
                std::erase(list_.entries_, nullptr);
            }
        }

    private:
        ObserverList& list_;
    };

    std::vector<Observer*> entries_;
    std::size_t count_ = 0;  // number of entries that are not null
    std::size_t visits_ = 0; // number of current visits
};

} // namespace oV
