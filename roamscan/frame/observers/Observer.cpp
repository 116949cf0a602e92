#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/observers/KeepAlive.h>
#include <roamscan/frame/observers/Observer.h>
#include <roamscan/frame/observers/ObserverRelationTable.h>
#include <roamscan/frame/observers/ThreadLocalStorage.h>

#include <algorithm>
#include <utility>

namespace oV
{

using Bv_1_1::ObserverInfo;
using Bv_1_1::String;

Bv_1_1::oVClass const* Observer::Class()
{
    static Bv_1_1::oVClass const record(
        L"Observer", BaseNode::Class(), Bv_1_1::Module::library(), Bv_1_1::ClassVersion{0});
    return &record;
}

ObserverRelationTable* Observer::srcToCopyTable() noexcept
{
    ThreadDataType const* const data = ThreadLocalStorage::the().getData();
    return data == nullptr ? nullptr : data->srcToCopyTable;
}

Observer::Observer() noexcept = default;
Observer::Observer(Observer const& other) noexcept : BaseNode(other) {}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is assigned
Observer& Observer::operator=(Observer const&) noexcept
{
    return *this;
}

Observer::~Observer()
{
    endRelations();
}

Bv_1_1::oVClass const* Observer::getClassType() const
{
    return Class();
}

bool Observer::copyFrom(Observer const*)
{
    return false;
}

void Observer::updateObservers(ObserverRelationTable const& table)
{
    Observer const* const source = table.sourceOf(this);
    if (source == nullptr || source->params_ == nullptr) {
        return;
    }
    for (Notice const notice : {Notice::Changed, Notice::ToChange}) {
        source->listOf(notice).visit(
            [&](Observer const& observer) { addObserver(table.copyOf(&observer), notice); });
    }
}

void Observer::notifyToChange(Observer* originator)
{
    if (params_ != nullptr) {
        notifySequence(originator, &params_->toChange);
    }
}

void Observer::notifyChanged(Observer* originator)
{
    if (params_ != nullptr) {
        notifySequence(originator, &params_->changed);
    }
}

void Observer::changedNotify(Observer*, Observer*) {}

void Observer::toChangeNotify(Observer*, Observer*) {}

Observer* Observer::inqObserver(String const&)
{
    return nullptr;
}

String Observer::getName() const
{
    return String::NIL;
}

String Observer::inqDisplayPath() const
{
    return getName();
}

String Observer::inqObjPath() const
{
    return getName();
}

bool Observer::isPartOfMainTree() const
{
    return false;
}

int Observer::readFrom(std::istream*, ReadContextBase*)
{
    return 0;
}

int Observer::writeTo(std::ostream*, WriteContextBase*) const
{
    return 0;
}

void Observer::informDelete(Observer*) noexcept {}

AttrContainer* Observer::lookupObject()
{
    return nullptr;
}

bool Observer::addObserver(Observer* observer, Notice notice)
{
    if (observer == nullptr) {
        return false;
    }
    ParamsEx& mine = makeParams();
    ParamsEx& theirs = observer->makeParams();
    if (((mine.flags | theirs.flags) & ParamsEx::leaving) != 0 || !listOf(notice).add(observer)) {
        return false;
    }
    try {
        ++theirs.observed[this];
    } catch (...) {
        listOf(notice).remove(observer);
        throw;
    }
    if (notice == Notice::ToChange) {
        mine.flags |= ParamsEx::announcing;
    }
    return true;
}

bool Observer::removeObserver(Observer* observer, Notice notice) noexcept
{
    if (params_ == nullptr || !listOf(notice).remove(observer)) {
        return false;
    }
    auto& observed = observer->params_->observed;
    auto const relation = observed.find(this);
    if (--relation->second == 0) {
        observed.erase(relation);
    }
    return true;
}

void Observer::addNotifyInfo(ObserverInfo* info)
{
    if (info != nullptr) {
        makeParams().infos.emplace_back(info);
    }
}

bool Observer::removeNotifyInfo(ObserverInfo const* info, bool release)
{
    if (params_ == nullptr) {
        return false;
    }
    auto& infos = params_->infos;
    auto const place = std::find(infos.begin(), infos.end(), info);
    if (place == infos.end()) {
        return false;
    }
    auto const removed = std::move(*place); // destroyed last, because its destructor may change the list
    infos.erase(place);
    if (release && infos.empty()) {
        infos.shrink_to_fit();
    }
    return true;
}

void Observer::removeNotifyInfos(bool release)
{
    removeNotifyInfosExcept(nullptr);
    if (release && params_ != nullptr) {
        params_->infos.shrink_to_fit();
    }
}

// One by one, because the destructor of a record may use the list.
void Observer::removeNotifyInfosExcept(Bv_1_1::oVClass const* type) noexcept
{
    auto const isRemoved = [type](auto const& info) { return !info->getClassType()->isDerivedFrom(type); };
    while (params_ != nullptr) {
        auto& infos = params_->infos;
        auto const place = std::find_if(infos.begin(), infos.end(), isRemoved);
        if (place == infos.end()) {
            return;
        }
        auto const removed = std::move(*place);
        infos.erase(place);
    }
}

ObserverInfo* Observer::lookupNotifyInfo(Bv_1_1::oVClass const* type) const
{
    if (params_ == nullptr) {
        return nullptr;
    }
    auto const& infos = params_->infos;
    auto const found = std::find_if(infos.rbegin(), infos.rend(), [&](auto const& info) {
        return info->getClassType()->isDerivedFrom(type);
    });
    return found == infos.rend() ? nullptr : found->get();
}

void Observer::notifySequence(Observer* originator, ObserverList* list)
{
    if (list == nullptr || list->empty()) {
        return;
    }
    KeepAlive const self(*this);
    bool const beforeChange = params_ != nullptr && list == &params_->toChange;
    list->visit([&](Observer& observer) {
        KeepAlive const notified(observer);
        if (beforeChange) {
            observer.toChangeNotify(this, originator);
        } else {
            observer.changedNotify(this, originator);
        }
    });
}

void Observer::endRelations() noexcept
{
    if (ObserverRelationTable* const table = srcToCopyTable()) {
        table->forget(this);
    }
    if (params_ == nullptr) {
        return;
    }
    params_->flags |= ParamsEx::leaving;
    for (auto const& [subject, lists] : params_->observed) {
        subject->params_->changed.remove(this);
        subject->params_->toChange.remove(this);
    }
    params_->observed.clear();
    detachObservers(params_->changed);
    detachObservers(params_->toChange);
    params_.reset();
}

Observer::ParamsEx& Observer::makeParams()
{
    if (params_ == nullptr) {
        params_ = std::make_unique<ParamsEx>();
    }
    return *params_;
}

ObserverList& Observer::listOf(Notice notice) const noexcept
{
    return notice == Notice::Changed ? params_->changed : params_->toChange;
}

// An observer in both lists is removed from both before it is notified, and is notified once.
void Observer::detachObservers(ObserverList& list) noexcept
{
    list.visit([this](Observer& observer) {
        params_->changed.remove(&observer);
        params_->toChange.remove(&observer);
        observer.params_->observed.erase(this);
        observer.informDelete(this);
    });
}

} // namespace oV
