#include <roamscan/frame/observers/BlockUpdateObservers.h>
#include <roamscan/frame/observers/Observer.h>

#include <exception>

namespace oV
{

BlockUpdateObservers::BlockUpdateObservers(ObserverRelationTable* table, Observer* toUpdate) noexcept
    : PreserveObserverRelation(table), toUpdate_(toUpdate), exceptionsAtStart_(std::uncaught_exceptions())
{
    if (table != nullptr) {
        ++table->blocks_;
    }
}

BlockUpdateObservers::~BlockUpdateObservers() noexcept(false)
{
    ObserverRelationTable* const relations = table();
    if (relations == nullptr || --relations->blocks_ != 0) {
        return;
    }
    if (toUpdate_ != nullptr && std::uncaught_exceptions() == exceptionsAtStart_) {
        toUpdate_->updateObservers(*relations);
    }
}

} // namespace oV
