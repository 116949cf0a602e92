#pragma once

#include <roamscan/frame/platform/Export.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>

namespace oV
{

class Observer;

/// What a copy operation has copied so far: from each source to its copy and back. With it the relations
/// among the sources are set up among the copies once all copies exist (Observer::updateObservers).
///
/// The table owns nothing; an object that goes away on the thread of the copy operation leaves the table. It
/// counts the scopes that use it (PreserveObserverRelation) and those that hold the update back
/// (BlockUpdateObservers). One thread at a time.
class ROAMSCAN_EXPORT ObserverRelationTable
{
public:
    ObserverRelationTable() = default;
    ObserverRelationTable(ObserverRelationTable const&) = delete;
    ObserverRelationTable& operator=(ObserverRelationTable const&) = delete;
    ~ObserverRelationTable() = default;

    /// Notes that `copy` was made from `source`. A later copy of the same source replaces an earlier one.
    void enter(Observer const* source, Observer* copy);

    /// The copy of `source`, or null.
    [[nodiscard]] Observer* copyOf(Observer const* source) const;

    /// What `copy` was made from, or null.
    [[nodiscard]] Observer const* sourceOf(Observer const* copy) const;

    /// Removes an object, as source and as copy.
    void forget(Observer const* observer) noexcept;

    /// Empties the table. The counts stay.
    void clearTable() noexcept;

    /// The number of sources.
    [[nodiscard]] std::size_t size() const noexcept { return copies_.size(); }
    /// The number of scopes that use the table.
    [[nodiscard]] std::uint32_t referenceCount() const noexcept { return references_; }
    /// The number of scopes that hold the update back.
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
