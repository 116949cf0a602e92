#pragma once

#include <roamscan/frame/observers/ObserverRelationTable.h>
#include <roamscan/frame/platform/Export.h>

#include <memory>

namespace oV
{

/// A scope guard for a copy operation. Sources and copies are recorded in a table, so that a copied observer
/// observes the copy of its subject. The table is cleared when the last scope that uses it ends.
class ROAMSCAN_EXPORT PreserveObserverRelation
{
public:
    /// Starts a copy operation on this thread, or joins the current one (Observer::srcToCopyTable).
    PreserveObserverRelation();

    /// Uses the given table, which must outlive the scope. If it is null, the scope does nothing.
    explicit PreserveObserverRelation(ObserverRelationTable* table) noexcept;

    PreserveObserverRelation(PreserveObserverRelation const&) = delete;
    PreserveObserverRelation& operator=(PreserveObserverRelation const&) = delete;
    ~PreserveObserverRelation();

    /// The table, or null.
    [[nodiscard]] ObserverRelationTable* table() const noexcept { return table_; }

private:
    std::unique_ptr<ObserverRelationTable> own_; // not null if this scope started the operation
    ObserverRelationTable* table_;
};

} // namespace oV
