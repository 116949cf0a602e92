#pragma once

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/Attribute.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/bvbase/CriticalSection.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsCont.h>

#include <type_traits>

namespace oV::Roamscan
{

/// The types that an option can have.
template <typename T>
inline constexpr bool isOptionType = std::is_same_v<T, bool> || std::is_same_v<T, int> ||
                                     std::is_same_v<T, double> || std::is_same_v<T, Bv_1_1::String>;

namespace detail
{

/// Access to the live container and its lock, for the functions below.
class LiveOptions
{
public:
    [[nodiscard]] static Bv_1_1::CriticalSection& lock() noexcept { return RoamscanOptions::lock; }

    /// The container, or null if the options are not up. Valid while the calling thread holds the lock:
    /// nothing replaces the singleton or its container once they exist.
    [[nodiscard]] static RoamscanOptionsCont* container()
    {
        return RoamscanOptions::instance ? RoamscanOptions::instance->m_opts.get() : nullptr;
    }
};

/// The first attribute with this name, of any type, or null.
[[nodiscard]] inline Attribute* findOption(RoamscanOptionsCont& options, Bv_1_1::String const& name)
{
    if (Attribute* const attribute = options.getAttribute(options.getAttrToken(name))) {
        return attribute;
    }
    Observer* const observer = options.inqObserver(name);
    bool const isAttribute =
        observer != nullptr && observer->getClassType()->isDerivedFrom(Attribute::Class());
    return isAttribute ? static_cast<Attribute*>(observer) : nullptr;
}

/// Casts an attribute to one with values of type `T`; null if it is null or of another type.
template <typename T>
[[nodiscard]] Attr<T>* asAttributeOf(Attribute* attribute)
{
    bool const isOfType = attribute != nullptr && attribute->getClassType()->isDerivedFrom(Attr<T>::Class());
    return isOfType ? static_cast<Attr<T>*>(attribute) : nullptr;
}

} // namespace detail

/// The value of an option. An option that does not exist is created with the value `fallback`, or with its
/// saved value if one was read before. Before RoamscanOptionsHost::setup(), the result is `fallback` and
/// nothing is created.
///
/// Thread-safe: holds the lock of the options during the whole call.
/// @tparam T `bool`, `int`, `double` or `Bv_1_1::String`
/// @param name any text
/// @param fallback the result if there is neither an option of this name and type nor a saved value
/// @param weak whether a new option is marked as weak: its value is only a default, which
///     RoamscanOptionsJsonMerger may replace. The mark of an existing option or of a saved value does not
///     change.
/// @param[out] isWeak if not null, receives whether the option is weak; always true if the option was created
///     with `fallback`. Unchanged before RoamscanOptionsHost::setup().
/// @note An option of the same name and another type is ignored.
template <typename T>
[[nodiscard]] T
getOption(Bv_1_1::String const& name, T const& fallback, bool weak = false, bool* isWeak = nullptr)
{
    static_assert(isOptionType<T>, "an option is a bool, an int, a double or a Bv_1_1::String");
    Bv_1_1::CriticalSection::Access const access(detail::LiveOptions::lock());
    RoamscanOptionsCont* const options = detail::LiveOptions::container();
    if (options == nullptr) {
        return fallback;
    }
    if (Attr<T> const* const attribute = detail::asAttributeOf<T>(detail::findOption(*options, name))) {
        if (isWeak != nullptr) {
            *isWeak = attribute->hasFlag(Attribute::weakValueFlag);
        }
        return attribute->getValue();
    }
    // A value that was loaded before the option existed was saved on purpose, so it counts as an existing
    // option.
    bool const wasLoaded = options->isValueKept(name, Attr<T>::Class()->name());
    Bv_1_1::SmartPtr<CustAttr<T>> const attribute(
        new CustAttr<T>(Bv_1_1::BaseNode::CreateType::Fresh, nullptr));
    attribute->setFlag(Attribute::weakValueFlag, weak && !wasLoaded);
    attribute->assignFrom(fallback, nullptr, nullptr);
    options->addAttribute(attribute.get(), name);
    if (isWeak != nullptr) {
        *isWeak = !wasLoaded; // true for an option that was just created, with the mark or without; kept so
    }
    return wasLoaded ? attribute->getValue() : fallback;
}

/// Sets an option. Creates it, not weak, if it does not exist. Observers of an existing option may veto the
/// change.
///
/// Thread-safe: holds the lock of the options during the whole call, including the notification of observers.
/// @tparam T `bool`, `int`, `double` or `Bv_1_1::String`
/// @param name any text
/// @param value the new value
/// @return the value of the option afterwards; `value` before RoamscanOptionsHost::setup()
/// @note An existing option that is weak stays weak.
/// @warning If the first option of this name has another type, the value is assigned to it as text. The
///     result is then that of getOption() for the type `T`.
template <typename T>
T setOption(Bv_1_1::String const& name, T const& value)
{
    static_assert(isOptionType<T>, "an option is a bool, an int, a double or a Bv_1_1::String");
    Bv_1_1::CriticalSection::Access const access(detail::LiveOptions::lock());
    RoamscanOptionsCont* const options = detail::LiveOptions::container();
    if (options == nullptr) {
        return value;
    }
    (void)getOption<T>(name, value, false, nullptr);
    Attribute* const found = detail::findOption(*options, name);
    if (Attr<T>* const attribute = detail::asAttributeOf<T>(found)) {
        attribute->assignFrom(value, nullptr, nullptr);
    } else if (found != nullptr) {
        Bv_1_1::String text;
        Bv_1_1::SmartPtr<CustAttr<T>> const asText(
            new CustAttr<T>(Bv_1_1::BaseNode::CreateType::Fresh, nullptr));
        asText->assignFrom(value, nullptr, nullptr);
        asText->getValueString(text);
        found->assignFromString(text, nullptr, nullptr);
    }
    return getOption<T>(name, value, false, nullptr);
}

} // namespace oV::Roamscan
