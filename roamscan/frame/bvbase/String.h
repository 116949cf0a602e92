#pragma once

#include <roamscan/frame/bvbase/StringVal.h>
#include <roamscan/frame/platform/Export.h>

#include <compare>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Bv_1_1
{

/// Reference-counted text in UTF-16. Copies share the text.
///
/// The null string NIL means that there is no text. It differs from the empty string EMPTY, but text() and
/// stringAnsi() return an empty text for both. Narrow text is UTF-8, except on Windows, where it is in the
/// process's code page.
///
/// Copies are copy-on-write: changing a string does not change its copies. Different strings may be used on
/// different threads, even if they share their text. One string may have many concurrent readers or one
/// writer.
class ROAMSCAN_EXPORT String
{
public:
    /// The null string.
    static String const NIL;
    /// The empty string.
    static String const EMPTY;

    /// The null string.
    constexpr String() noexcept = default;

    /// Copies wide text up to its terminating zero. A null pointer gives NIL. Code points beyond Unicode
    /// become U+FFFD.
    String(wchar_t const* text); // NOLINT(google-explicit-constructor): wide literals convert to strings

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
        // The constants are not released: they need no exit action and stay readable until the process ends.
        if (!std::is_constant_evaluated() && value_ != nullptr) {
            value_->unref();
        }
    }

    /// Copies narrow text up to its terminating zero. A null pointer gives NIL. Malformed sequences become
    /// U+FFFD.
    [[nodiscard]] static String fromNarrow(char const* text);

    /// Copies UTF-16 text. Unpaired surrogates are kept.
    [[nodiscard]] static String fromUtf16(std::u16string_view text);

    /// Takes ownership of one reference to `value`. Null gives NIL.
    [[nodiscard]] static String adopt(StringVal* value) noexcept { return {Adopted{}, value}; }

    /// Exchanges the two values.
    void swap(String& other) noexcept { std::swap(value_, other.value_); }

    /// Whether this is the null string.
    [[nodiscard]] bool isNil() const noexcept { return value_ == nullptr; }

    /// The shared value; null for NIL.
    [[nodiscard]] StringVal const* value() const noexcept { return value_; }

    /// The text in UTF-16; empty for NIL. Valid until the string is changed or destroyed.
    [[nodiscard]] std::u16string_view text() const noexcept
    {
        return isNil() ? std::u16string_view() : value_->text();
    }

    /// The narrow text; "" for NIL. Valid until the string is changed or destroyed. Unpaired surrogates
    /// become U+FFFD. Thread-safe, also for strings that share their text.
    [[nodiscard]] char const* stringAnsi() const;

    /// Compares by 16-bit units. A null pointer counts as NIL, which is less than every text.
    /// @return negative, 0 or positive, as this string is less than, equal to or greater than `other`
    [[nodiscard]] int compare(wchar_t const* other) const;

    /// Whether the texts are equal. NIL equals only NIL, not the empty string.
    [[nodiscard]] bool compareEquality(String const& other) const noexcept
    {
        if (value_ == other.value_) {
            return true;
        }
        // Comparing bytes is several times as fast as comparing units by char_traits<char16_t>::compare().
        return !isNil() && !other.isNil() && value_->length() == other.value_->length() &&
               std::memcmp(text().data(), other.text().data(), text().size() * sizeof(char16_t)) == 0;
    }

    /// Appends a text. Appending NIL or a null pointer changes nothing. Appending an empty text to NIL gives
    /// the empty string.
    String& operator<<(String const& other);
    String& operator<<(wchar_t const* other);
    /// Appends the number's decimal form.
    String& operator<<(int number);
    /// Appends "1" or "0".
    String& operator<<(bool value);
    /// Appends the number's decimal form.
    String& operator<<(unsigned long long number);
    /// Deleted, because a pointer would otherwise convert to `bool`. Use fromNarrow() for narrow text.
    String& operator<<(void const*) = delete;

    /// Appends the shortest decimal form that parses to the same number, such as "0.1", "1e+22", "inf" or
    /// "nan".
    String& operator+=(double number);

    /// Parses the whole text into `target`. White space around the value is ignored. A `bool` is "1", "0",
    /// "true" or "false"; numbers are decimal and may have a sign. If the text is not such a value, or the
    /// value is out of range, the target is unchanged.
    String const& operator>>(bool& target) const;
    String const& operator>>(int& target) const;
    String const& operator>>(double& target) const;
    /// Copies the string unchanged, including white space; also NIL.
    String const& operator>>(String& target) const;

    /// compareEquality().
    [[nodiscard]] friend bool operator==(String const& a, String const& b) noexcept
    {
        return a.compareEquality(b);
    }

    /// Compares by 16-bit units. NIL is less than every text.
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
    ROAMSCAN_NO_EXPORT static EmptyValue emptyValue;

    constexpr String(Adopted, StringVal* value) noexcept : value_(value) {}

    ROAMSCAN_NO_EXPORT void append(std::u16string_view text);

    StringVal* value_ = nullptr;
};

/// The concatenation of two texts. A null pointer counts as NIL. The result is NIL only if both are NIL.
[[nodiscard]] ROAMSCAN_EXPORT String operator+(wchar_t const* first, String const& second);

} // namespace Bv_1_1
