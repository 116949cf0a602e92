#include <roamscan/frame/observers/PreserveObserverRelation.h>
#include <roamscan/frame/observers/ThreadLocalStorage.h>

namespace oV
{

PreserveObserverRelation::PreserveObserverRelation() : table_(nullptr)
{
    ThreadDataType& data = ThreadLocalStorage::the().makeData();
    if (data.srcToCopyTable == nullptr) {
        own_ = std::make_unique<ObserverRelationTable>();
        data.srcToCopyTable = own_.get();
    }
    table_ = data.srcToCopyTable;
    ++table_->references_;
}

PreserveObserverRelation::PreserveObserverRelation(ObserverRelationTable* table) noexcept : table_(table)
{
    if (table_ != nullptr) {
        ++table_->references_;
    }
}

PreserveObserverRelation::~PreserveObserverRelation()
{
    if (table_ != nullptr && --table_->references_ == 0) {
        table_->clearTable();
    }
    if (own_ != nullptr) {
        ThreadLocalStorage::the().makeData().srcToCopyTable = nullptr;
    }
}

} // namespace oV
