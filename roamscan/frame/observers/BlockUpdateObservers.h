#pragma once

#include <roamscan/frame/observers/PreserveObserverRelation.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// A scope guard that defers the update of observers while a container is set up. When the last nested scope
/// on a table ends, it calls Observer::updateObservers() on its object, if it has one.
class ROAMSCAN_EXPORT BlockUpdateObservers : public PreserveObserverRelation
{
public:
    /// @param table must outlive the scope; if null, the scope does nothing
    /// @param toUpdate the object to update at the end, or null; must outlive the scope
    BlockUpdateObservers(ObserverRelationTable* table, Observer* toUpdate) noexcept;

    /// Does not update if the scope is left by an exception. Exceptions of the update pass through; the
    /// counts of the table are decremented in any case.
    ~BlockUpdateObservers() noexcept(false);

private:
    Observer* toUpdate_;
    int exceptionsAtStart_;
};

} // namespace oV
