#pragma once

#include <roamscan/frame/observers/PreserveObserverRelation.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// A scope that holds the update of observers back while a container sets itself up. When the last of the
/// nested scopes on a table ends, it runs Observer::updateObservers() on its object, if it has one.
class ROAMSCAN_EXPORT BlockUpdateObservers : public PreserveObserverRelation
{
public:
    /// @param table null for none; the scope then does nothing
    /// @param toUpdate the object to update at the end, or null; it must outlive the scope
    BlockUpdateObservers(ObserverRelationTable* table, Observer* toUpdate) noexcept;

    /// Nothing is updated while an exception from within the scope passes through.
    /// @throws whatever the update throws; the counts are lowered all the same
    ~BlockUpdateObservers() noexcept(false);

private:
    Observer* toUpdate_;
    int exceptionsAtStart_;
};

} // namespace oV
