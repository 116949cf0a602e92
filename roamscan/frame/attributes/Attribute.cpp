#include <roamscan/frame/attributes/AttrContainer.h>
#include <roamscan/frame/attributes/Attribute.h>
#include <roamscan/frame/attributes/CachedAttributeInfo.h>
#include <roamscan/frame/attributes/detail/AttributeBlock.h>
#include <roamscan/frame/attributes/detail/ModifiedListeners.h>
#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/formats/ReadFromScope.h>
#include <roamscan/frame/observers/KeepAlive.h>
#include <roamscan/frame/observers/ThreadLocalStorage.h>

#include <new>
#include <utility>

namespace oV
{

using Bv_1_1::String;

namespace
{

struct AttributeKeys : KeyTable
{
    AttributeKeys() { addEntry(Attribute::valueToken, ModelFormat::valueKeyword); }
};

ThreadDataType* threadData() noexcept
{
    return ThreadLocalStorage::the().getData();
}

} // namespace

Bv_1_1::oVClass const* Attribute::Class()
{
    static Bv_1_1::oVClass const record(
        L"Attribute", Observer::Class(), Bv_1_1::Module::library(), Bv_1_1::ClassVersion{0});
    return &record;
}

KeyTable const& Attribute::keyTable()
{
    static AttributeKeys const table;
    return table;
}

bool Attribute::isObservingBlocked() noexcept
{
    ThreadDataType const* const data = threadData();
    return data != nullptr && data->observingBlocks != 0;
}

bool Attribute::isCachedAttributePending() noexcept
{
    ThreadDataType const* const data = threadData();
    return data != nullptr && data->cachedAttributePending;
}

void Attribute::setIsCachedAttributePending(bool pending) noexcept
{
    ThreadLocalStorage::the().makeData().cachedAttributePending = pending;
}

bool Attribute::isOnCachedPath() noexcept
{
    ThreadDataType const* const data = threadData();
    return data != nullptr && data->cachedPathCount != 0;
}

bool Attribute::isAnyModifiedListenerExisting() noexcept
{
    return detail::ModifiedListeners::the().any();
}

void Attribute::addModifiedListener(ModifiedListener* listener)
{
    detail::ModifiedListeners::the().add(listener);
}

bool Attribute::removeModifiedListener(ModifiedListener const* listener)
{
    return detail::ModifiedListeners::the().remove(listener);
}

// Memory. The thread's data tells the constructor whether operator new placed the attribute in a block, and
// operator delete whether the destroyed attribute was in one.

void* Attribute::operator new(std::size_t size)
{
    void* const memory = ::operator new(size);
    if (ThreadDataType* const data = threadData()) {
        data->attributeInBlock = 0;
    }
    return memory;
}

void* Attribute::operator new(std::size_t, void* place) noexcept
{
    ThreadLocalStorage::the().makeData().attributeInBlock = 1;
    return place;
}

void Attribute::operator delete(void* memory) noexcept
{
    ThreadDataType* const data = threadData();
    if (data == nullptr || data->attributeInBlock == 0) {
        ::operator delete(memory);
        return;
    }
    data->attributeInBlock = 0;
    if (detail::AttributeBlock* const block = std::exchange(data->blockOfAttribute, nullptr)) {
        block->unref();
    }
}

// Called if the constructor throws in a placement new.
void Attribute::operator delete(void* memory, void*) noexcept
{
    Attribute::operator delete(memory);
}

Attribute::Attribute(CreateType type, Attribute const* source) noexcept
{
    if (source != nullptr && type != CreateType::NoSource) {
        flags_ = source->flags_;
    }
    ThreadDataType* const data = threadData();
    bool const inBlock = data != nullptr && std::exchange(data->attributeInBlock, 0) != 0;
    flags_ = static_cast<std::uint16_t>(inBlock ? flags_ | inBlockFlag : flags_ & ~inBlockFlag);
}

Attribute::~Attribute()
{
    // First, because observers may react by destroying other attributes, which would overwrite the thread's
    // data set below.
    endRelations();
    if (isInBlock()) {
        ThreadDataType& data = ThreadLocalStorage::the().makeData();
        data.attributeInBlock = 1;
        data.blockOfAttribute = block_;
    } else if (ThreadDataType* const data = threadData()) {
        data->attributeInBlock = 0;
    }
}

Bv_1_1::oVClass const* Attribute::getClassType() const
{
    return Class();
}

bool Attribute::copyFrom(Observer const* source)
{
    if (source == nullptr || !source->getClassType()->isDerivedFrom(Class())) {
        return false;
    }
    assignAttr(static_cast<Attribute const&>(*source));
    return true;
}

Observer* Attribute::inqObserver(String const& name)
{
    return name == getName() ? this : nullptr;
}

String Attribute::getName() const
{
    return name_;
}

String Attribute::inqDisplayPath() const
{
    return container_ == nullptr ? name_ : pathBelow(container_->inqDisplayPath());
}

String Attribute::inqObjPath() const
{
    return container_ == nullptr ? name_ : pathBelow(container_->inqObjPath());
}

String Attribute::pathBelow(String const& containerPath) const
{
    String path(containerPath);
    path << L"/" << name_;
    return path;
}

bool Attribute::isPartOfMainTree() const
{
    return container_ != nullptr && container_->isPartOfMainTree();
}

int Attribute::readFrom(std::istream* stream, ReadContextBase* context)
{
    ReadFromScope const scope(stream, context);
    return scope.getImf().unknownKeyword();
}

int Attribute::writeTo(std::ostream*, WriteContextBase*) const
{
    return StatusCode::ok;
}

AttrContainer* Attribute::lookupObject()
{
    return container_ == nullptr ? nullptr : container_->lookupObject();
}

bool Attribute::differsAttr(Attribute const& other) const
{
    return !equalsAttr(other);
}

void Attribute::touch(Observer* observer, void*)
{
    KeepAlive const self(*this);
    struct RemoveRecords // also when an observer throws
    {
        Attribute& attribute;
        ~RemoveRecords() { attribute.removeNotifyInfosExcept(CachedAttributeInfo::Class()); }
    } const atEnd{*this};
    if (!isObservingBlocked()) {
        notifyChanged(observer);
    }
}

AttrContainer* Attribute::getLocation(unsigned int) const
{
    return container_;
}

bool Attribute::setLocation(AttrContainer*)
{
    return false;
}

void Attribute::preTouch(Observer* observer, void*)
{
    if (!isObservingBlocked()) {
        notifyToChange(observer);
    }
}

void Attribute::informModifiedListeners(Observer* observer, void* parameter)
{
    detail::ModifiedListeners::the().inform(*this, observer, parameter);
}

void Attribute::setFlag(std::uint16_t flag, bool value) noexcept
{
    auto const bits = static_cast<std::uint16_t>(flag & ~inBlockFlag);
    flags_ = static_cast<std::uint16_t>(value ? flags_ | bits : flags_ & ~bits);
}

} // namespace oV
