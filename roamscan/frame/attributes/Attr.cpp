#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/CachedAttributeInfo.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/attributes/NewValueInfo.h>
#include <roamscan/frame/attributes/detail/AnyToken.h>
#include <roamscan/frame/attributes/detail/ValueNames.h>
#include <roamscan/frame/attributes/detail/ValueText.h>
#include <roamscan/frame/bvbase/detail/CreatingClass.h>
#include <roamscan/frame/bvbase/detail/FreshNode.h>
#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/formats/ReadFromScope.h>
#include <roamscan/frame/formats/WriteToScope.h>
#include <roamscan/frame/formats/detail/EndOfBlock.h>
#include <roamscan/frame/observers/InfoFailed.h>
#include <roamscan/frame/observers/KeepAlive.h>
#include <roamscan/frame/observers/ThreadLocalStorage.h>

#include <array>
#include <utility>

namespace oV
{

namespace
{

template <typename T>
T initialValue()
{
    return T{};
}

template <>
Bv_1_1::String initialValue()
{
    return Bv_1_1::String::EMPTY;
}

// The record of the pending value of an attribute, or null.
CachedAttributeInfo const* pendingInfo(Attribute const& attribute)
{
    return Attribute::isCachedAttributePending()
               ? static_cast<CachedAttributeInfo const*>(
                     attribute.lookupNotifyInfo(CachedAttributeInfo::Class()))
               : nullptr;
}

template <typename T>
bool isAttr(Attribute const& attribute)
{
    return attribute.getClassType()->isDerivedFrom(Attr<T>::Class());
}

} // namespace

template <typename T>
Attr<T>::Attr(CreateType type, Attribute const* source)
    : Attribute(type, source), value_(std::make_unique<AttrVal<T>>(initialValue<T>()))
{}

template <typename T>
Attr<T>::~Attr() = default;

template <typename T>
void Attr<T>::setHolder(std::unique_ptr<AttrVal<T>> holder) noexcept
{
    value_ = std::move(holder);
}

template <typename T>
Bv_1_1::oVClass const* Attr<T>::Class()
{
    static Bv_1_1::detail::CreatingClass const record(
        detail::ValueNames<T>::attribute, Attribute::Class(), []() -> BaseNode* {
            return new Attr(CreateType::Fresh, nullptr);
        });
    return &record;
}

template <typename T>
Bv_1_1::oVClass const* Attr<T>::getClassType() const
{
    return Class();
}

// Model formats.

template <typename T>
int Attr<T>::readFrom(std::istream* stream, ReadContextBase* context)
{
    ReadFromScope const scope(stream, context);
    ModelInFormat& in = scope.getImf();
    int kept = StatusCode::ok;
    bool valueSeen = false;
    Bv_1_1::String keyword = in.getKeyword();
    while (!keyword.isNil() && !detail::isEndOfBlock(keyword)) {
        if (keyTable().keyToToken(keyword) == valueToken) {
            readValueFrom(stream, context);
            valueSeen = true;
        } else {
            int const status = Attribute::readFrom(stream, context);
            if (!StatusCode::isTolerated(status)) {
                return status;
            }
            kept = StatusCode::keep(kept, status);
        }
        in.nextKeyword();
        keyword = in.getKeyword();
    }
    if (!valueSeen) {
        value_->value = initialValue<T>();
    }
    if (detail::isEndOfBlock(keyword)) {
        in.setPropagateKeyword(keyword);
    }
    return kept;
}

template <typename T>
int Attr<T>::writeTo(std::ostream* stream, WriteContextBase* context) const
{
    if (context == nullptr) {
        return StatusCode::noContext;
    }
    WriteToScope const scope(stream, context);
    ModelOutFormat& out = scope.getMof();
    T const& value = currentValue();
    if (context->getFormat() == ModelFormat::Format::Bare) {
        detail::writeValue(out, value);
    } else if (context->writeDefaultValues() || !detail::countsAsDefault(value)) {
        out.startValue(keyTable().tokenToKey(valueToken));
        detail::writeValue(out, value);
        out.endValue();
    }
    return out.good() ? Attribute::writeTo(stream, context) : StatusCode::writeFailed;
}

template <typename T>
void Attr<T>::readValueFrom(std::istream* stream, ReadContextBase* context)
{
    ReadFromScope const scope(stream, context);
    detail::readValue(scope.getImf(), value_->value);
}

// Copies and comparison.

template <typename T>
Attribute* Attr<T>::duplicateAttr(CreateType type, bool plain) const
{
    Attr const* const source = type == CreateType::NoSource ? nullptr : this;
    if (ThreadDataType* const data = ThreadLocalStorage::the().getData()) {
        data->attributeInBlock = 0;
    }
    Attr* const made = plain ? new Attr(type, source) : new CustAttr<T>(type, source);
    Bv_1_1::detail::FreshNode<Attr> owner(made);
    if (source != nullptr) {
        made->assignAttr(*source);
        if (!plain) {
            made->setLocation(source->getLocation(detail::anyToken));
        }
    }
    return owner.release();
}

template <typename T>
void Attr<T>::assignAttr(Attribute const& other)
{
    if (isAttr<T>(other)) {
        value_->value = T(static_cast<Attr const&>(other).currentValue());
    } else {
        Bv_1_1::String text;
        other.getValueString(text);
        detail::parseValue(text, value_->value);
    }
}

template <typename T>
bool Attr<T>::equalsAttr(Attribute const& other) const
{
    return isAttr<T>(other) && currentValue() == static_cast<Attr const&>(other).currentValue();
}

// Values.

// Reads the cached attribute's own value: a cached attribute has no pending value itself.
template <typename T>
T const& Attr<T>::currentValue() const
{
    if (CachedAttributeInfo const* const info = pendingInfo(*this)) {
        Attribute const* const cached = info->getCachedAttribute();
        if (cached != nullptr && isAttr<T>(*cached)) {
            return static_cast<Attr const*>(cached)->value_->value;
        }
    }
    return value_->value;
}

template <typename T>
void Attr<T>::getValueString(Bv_1_1::String& text) const
{
    text = detail::textOfValue(currentValue());
}

template <typename T>
bool Attr<T>::assignFrom(T const& newValue, Observer* observer, void* parameter)
{
    KeepAlive const self(*this);
    T accepted(newValue); // a copy, because an observer may change the referenced value
    if (isOnCachedPath()) {
        if (!isObservingBlocked() && !announce(accepted, observer, parameter)) {
            return false;
        }
        dropCachedValue();
        if (isObservingBlocked()) {
            value_->value = std::move(accepted);
            return true;
        }
    } else if (!announce(accepted, observer, parameter)) {
        return false;
    }
    if (!hasFlag(silentFlag) && isAnyModifiedListenerExisting() && accepted != currentValue()) {
        informModifiedListeners(observer, parameter);
    }
    value_->value = std::move(accepted);
    Attribute::touch(observer, parameter);
    return true;
}

template <typename T>
void Attr<T>::assignSilently(T const& newValue, Observer* observer, void* parameter)
{
    KeepAlive const self(*this);
    T accepted(newValue);
    preTouch(observer, parameter);
    value_->value = std::move(accepted);
    touch(observer, parameter);
}

template <typename T>
void Attr<T>::assignFromString(Bv_1_1::String const& text, Observer* observer, void* parameter)
{
    KeepAlive const self(*this);
    Bv_1_1::String const kept(text);
    preTouch(observer, parameter);
    dropCachedValue();
    detail::parseValue(kept, value_->value);
    touch(observer, parameter);
}

template <typename T>
void Attr<T>::touch(Observer* observer, void* parameter)
{
    KeepAlive const self(*this);
    if (isOnCachedPath()) {
        CachedAttributeInfo const* const info = pendingInfo(*this);
        if (info != nullptr && info->getCachedAttribute() != nullptr) {
            assignAttr(*info->getCachedAttribute());
            dropCachedValue();
        }
    }
    Attribute::touch(observer, parameter); // does not notify while notification is blocked
}

// Notifies the observers of the second list. Returns false if one of them added an InfoFailed record.
template <typename T>
bool Attr<T>::announce(T const& newValue, Observer* observer, void* parameter)
{
    ParamsEx const* const params = parEx();
    if (params == nullptr || (params->flags & ParamsEx::announcing) == 0 || params->toChange.empty()) {
        return true;
    }
    addNotifyInfo(Bv_1_1::SmartPtr<NewValueInfo<T>>(new NewValueInfo<T>(newValue)).get());
    try {
        preTouch(observer, parameter);
    } catch (...) {
        removeNotifyInfos(false); // an exception counts as a veto
        throw;
    }
    if (lookupNotifyInfo(InfoFailed::Class()) != nullptr) {
        removeNotifyInfos(false);
        return false;
    }
    return true;
}

// Discards the pending value, if there is one.
template <typename T>
void Attr<T>::dropCachedValue()
{
    if (CachedAttributeInfo const* const info = pendingInfo(*this)) {
        setIsCachedAttributePending(false);
        removeNotifyInfo(info, true);
    }
}

template <typename T>
AttrContainer* Attr<T>::getLocation(unsigned int token) const
{
    AttrContainer* const known = value_->lookUpLocation(token);
    return known != nullptr ? known : Attribute::getLocation(token);
}

template <typename T>
bool Attr<T>::setLocation(AttrContainer* container)
{
    return value_->setLocation(container);
}

template class ROAMSCAN_EXPORT_DEFINED_INSTANCE Attr<bool>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE Attr<int>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE Attr<double>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE Attr<Bv_1_1::String>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE Attr<StringList>;

} // namespace oV
