#pragma once

#include <roamscan/frame/platform/Export.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>

namespace oV
{

class Observer;

/// A bidirectional table of the sources and copies of a copy operation. When all copies exist,
/// Observer::updateObservers() uses it to observe among the copies what is observed among the sources.
///
/// The table owns nothing. An object that is destroyed on the thread of the copy operation is removed from
/// it. The table counts the scopes that use it (PreserveObserverRelation) and the scopes that defer the
/// update (BlockUpdateObservers).
///
/// Thread safety: all use of a table needs exclusive access.
class ROAMSCAN_EXPORT ObserverRelationTable
{
public:
    ObserverRelationTable() = default;
    ObserverRelationTable(ObserverRelationTable const&) = delete;
    ObserverRelationTable& operator=(ObserverRelationTable const&) = delete;
    ~ObserverRelationTable() = default;

    /// Records that `copy` is a copy of `source`. A later copy of the same source replaces an earlier one.
    void enter(Observer const* source, Observer* copy);

    /// The copy of `source`, or null.
    [[nodiscard]] Observer* copyOf(Observer const* source) const;

    /// The source of `copy`, or null.
    [[nodiscard]] Observer const* sourceOf(Observer const* copy) const;

    /// Removes an object, as source and as copy.
    void forget(Observer const* observer) noexcept;

    /// Removes all entries. The counts of scopes do not change.
    void clearTable() noexcept;

    /// The number of sources.
    [[nodiscard]] std::size_t size() const noexcept { return copies_.size(); }
    /// The number of scopes that use the table.
    [[nodiscard]] std::uint32_t referenceCount() const noexcept { return references_; }
    /// The number of scopes that defer the update.
    [[nodiscard]] std::uint32_t blockCount() const noexcept { return blocks_; }

private:
    friend class PreserveObserverRelation;
    friend class BlockUpdateObservers;

    std::unordered_map<Observer const*, Observer*> copies_;
    std::unordered_map<Observer const*, Observer const*> sources_;
    std::uint32_t references_ = 0;
    std::uint32_t blocks_ = 0;
};

} // namespace oV
