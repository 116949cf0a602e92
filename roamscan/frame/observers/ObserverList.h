#pragma once

#include <roamscan/frame/platform/Export.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace oV
{

class Observer;

/// Observers in the order in which they were added, each at most once. The list owns none of them.
///
/// The list may change while it is visited: an observer that is removed is not visited any more, one that is
/// added is visited next time.
class ROAMSCAN_EXPORT ObserverList
{
public:
    ObserverList() = default;
    ObserverList(ObserverList const&) = delete;
    ObserverList& operator=(ObserverList const&) = delete;
    ~ObserverList() = default;

    /// Appends an observer. False if it is in the list already.
    bool add(Observer* observer);

    /// Removes an observer. False if it is not in the list.
    bool remove(Observer const* observer) noexcept;

    /// True if the observer is in the list.
    [[nodiscard]] bool contains(Observer const* observer) const noexcept;
    /// The number of observers.
    [[nodiscard]] std::size_t size() const noexcept { return count_; }
    /// True if the list has no observer.
    [[nodiscard]] bool empty() const noexcept { return count_ == 0; }

    /// Calls `call(Observer&)` for each observer, in order. What it throws passes through.
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
    // While visits are under way, entries stay in place and removed ones are null; the last visit removes
    // those.
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
    std::size_t count_ = 0;  // of the entries that are not null
    std::size_t visits_ = 0; // under way
};

} // namespace oV
