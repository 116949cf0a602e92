#pragma once

#include <roamscan/frame/bvbase/StringVal.h>
#include <roamscan/frame/platform/Export.h>

#include <compare>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Bv_1_1
{

/// Text that copies share: one pointer to a counted StringVal, null for the null string.
///
/// The null string NIL is a value apart from the empty string: it says that there is no text. It reads as an
/// empty text where a text is asked for. Inside, text is UTF-16; narrow text is UTF-8, except on Windows,
/// where it is in the process's code page.
///
/// Changing a string never changes another one. Different strings may be used on different threads also where
/// they share their text; one string is for many readers or one writer.
class ROAMSCAN_EXPORT String
{
public:
    /// The null string.
    static String const NIL;
    /// The string without any text.
    static String const EMPTY;

    /// The null string.
    constexpr String() noexcept = default;

    /// A string of the wide text, up to its terminator; NIL for a null pointer. Code points beyond Unicode
    /// become U+FFFD.
    String(wchar_t const* text); // NOLINT(google-explicit-constructor): wide literals serve as strings

    String(String const& other) noexcept : value_(other.value_)
    {
        if (value_ != nullptr) {
            value_->ref();
        }
    }
    /// Leaves `other` NIL.
    String(String&& other) noexcept : value_(std::exchange(other.value_, nullptr)) {}

    String& operator=(String const& other) noexcept
    {
        String(other).swap(*this);
        return *this;
    }
    /// Leaves `other` NIL, unless it is this string.
    String& operator=(String&& other) noexcept
    {
        String(std::move(other)).swap(*this);
        return *this;
    }

    constexpr ~String()
    {
        // The constants end without a release: they need no exit action and stay readable until the very end.
        if (!std::is_constant_evaluated() && value_ != nullptr) {
            value_->unref();
        }
    }

    /// A string of the narrow text, up to its terminator; NIL for a null pointer. Malformed text becomes
    /// U+FFFD.
    [[nodiscard]] static String fromNarrow(char const* text);

    /// A string of the units. Lone surrogates are kept.
    [[nodiscard]] static String fromUtf16(std::u16string_view text);

    /// A string that takes over the caller's reference to the value, which may be null.
    [[nodiscard]] static String adopt(StringVal* value) noexcept { return {Adopted{}, value}; }

    /// Exchanges the two values.
    void swap(String& other) noexcept { std::swap(value_, other.value_); }

    /// Whether this is the null string.
    [[nodiscard]] bool isNil() const noexcept { return value_ == nullptr; }

    /// The shared value; null for NIL.
    [[nodiscard]] StringVal const* value() const noexcept { return value_; }

    /// The text in UTF-16, valid while the string lives unchanged; empty for NIL.
    [[nodiscard]] std::u16string_view text() const noexcept;

    /// The narrow text, valid while the string lives unchanged; "" for NIL. Lone surrogates become U+FFFD.
    /// Safe on many threads at once, also for strings that share their text.
    [[nodiscard]] char const* stringAnsi() const;

    /// Below 0, 0 or above 0, by 16-bit units. A null pointer stands for NIL, which is below every text.
    [[nodiscard]] int compare(wchar_t const* other) const;

    /// Whether the texts are equal. NIL equals NIL alone, not the empty string.
    [[nodiscard]] bool compareEquality(String const& other) const noexcept;

    /// Appends a text. Appending NIL or a null pointer changes nothing; an empty text makes NIL the empty
    /// string.
    String& operator<<(String const& other);
    String& operator<<(wchar_t const* other);
    /// Appends the number's decimal form.
    String& operator<<(int number);
    /// Appends "1" or "0".
    String& operator<<(bool value);
    /// Appends the number's decimal form.
    String& operator<<(unsigned long long number);
    /// A pointer is no text; without this it would be appended as a bool. Use fromNarrow() for narrow text.
    String& operator<<(void const*) = delete;

    /// Appends the shortest decimal form that reads back to the same number, such as "0.1", "1e+22", "inf" or
    /// "nan".
    String& operator+=(double number);

    /// Parses the whole text, blanks around it aside. A text that is not of the target's kind or beyond its
    /// range leaves the target as it was. A bool is "1", "0", "true" or "false"; numbers are decimal and may
    /// have a sign.
    String const& operator>>(bool& target) const;
    String const& operator>>(int& target) const;
    String const& operator>>(double& target) const;
    /// The whole string as it is, blanks included, also NIL.
    String const& operator>>(String& target) const;

    /// compareEquality().
    [[nodiscard]] friend bool operator==(String const& a, String const& b) noexcept
    {
        return a.compareEquality(b);
    }

    /// By 16-bit units, NIL below every text.
    [[nodiscard]] friend std::strong_ordering operator<=>(String const& a, String const& b) noexcept
    {
        if (a.isNil() || b.isNil()) {
            return b.isNil() <=> a.isNil();
        }
        return a.text() <=> b.text();
    }

private:
    struct Adopted
    {};
    struct EmptyValue;
    static EmptyValue emptyValue;

    constexpr String(Adopted, StringVal* value) noexcept : value_(value) {}

    void append(std::u16string_view text);

    StringVal* value_ = nullptr;
};

/// Both texts, one behind the other. A null pointer counts as NIL; the result is NIL only if both are.
[[nodiscard]] ROAMSCAN_EXPORT String operator+(wchar_t const* first, String const& second);

} // namespace Bv_1_1
