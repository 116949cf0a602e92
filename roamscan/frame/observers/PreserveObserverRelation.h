#pragma once

#include <roamscan/frame/observers/ObserverRelationTable.h>
#include <roamscan/frame/platform/Export.h>

#include <memory>

namespace oV
{

/// A scope in which sources and their copies are kept in a table, so that observers among the copied objects
/// stay observers. The table is cleared when the last scope that uses it ends.
class ROAMSCAN_EXPORT PreserveObserverRelation
{
public:
    /// Starts a copy operation on this thread, or joins the one that is under way (Observer::srcToCopyTable).
    PreserveObserverRelation();

    /// Uses the given table; null for none. The table must outlive the scope.
    explicit PreserveObserverRelation(ObserverRelationTable* table) noexcept;

    PreserveObserverRelation(PreserveObserverRelation const&) = delete;
    PreserveObserverRelation& operator=(PreserveObserverRelation const&) = delete;
    ~PreserveObserverRelation();

    /// The table, or null.
    [[nodiscard]] ObserverRelationTable* table() const noexcept { return table_; }

private:
    std::unique_ptr<ObserverRelationTable> own_; // if this scope has started the operation
    ObserverRelationTable* table_;
};

} // namespace oV
