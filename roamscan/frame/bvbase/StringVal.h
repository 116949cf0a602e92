#pragma once

#include <roamscan/frame/bvbase/CodePageInterface.h>
#include <roamscan/frame/platform/Export.h>

#include <atomic>
#include <cstdint>
#include <string_view>

namespace Bv_1_1
{

/// The text that strings share: a reference count, and behind this header the text in UTF-16 with a
/// terminator. The text never changes, so any number of threads may read it at once.
///
/// Values are made by the functions below with one reference, which is the caller's.
class ROAMSCAN_EXPORT StringVal
{
public:
    StringVal(StringVal const&) = delete;
    StringVal& operator=(StringVal const&) = delete;

    /// A value from narrow text; null for null text. `length` is the number of bytes, -1 for all up to the
    /// terminator; `codePage` is the encoding, -1 for the platform's own (UTF-8, except on Windows).
    /// Malformed sequences become U+FFFD.
    /// @throws std::invalid_argument if the platform has no such code page; elsewhere than on Windows there
    /// is UTF-8 alone (65001, or 0)
    [[nodiscard]] static StringVal* construct(char const* text, int length, int codePage);

    /// The same for a text that comes with its code page. A `codePage` other than -1 takes the place of the
    /// text's own.
    [[nodiscard]] static StringVal*
    constructUsingCodepage(CodePageInterface source, int length, int codePage);

    /// A value of two texts in UTF-16, one behind the other. Lone surrogates are kept.
    /// @throws std::length_error if the length does not fit an `int`
    [[nodiscard]] static StringVal* constructFromUtf16(std::u16string_view first,
                                                       std::u16string_view second = {});

    /// Takes one reference.
    void ref() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }

    /// Drops one reference and frees the value with the last one. True if it was freed.
    bool unref() noexcept;

    /// Number of 16-bit units.
    [[nodiscard]] int length() const noexcept { return length_; }

    /// The text; a terminating zero stands behind it.
    [[nodiscard]] std::u16string_view text() const noexcept;

    /// The text in the narrow encoding, made when it is first asked for and valid as long as the value. Lone
    /// surrogates become U+FFFD. Safe on many threads at once.
    [[nodiscard]] char const* narrow() const;

private:
    friend class String;

    explicit constexpr StringVal(int length) noexcept : length_(length) {}
    ~StringVal() = default;

    std::atomic<std::uint32_t> references_ = 1; // first: code outside counts on it directly
    std::int32_t length_;
    mutable std::atomic<char const*> narrow_ = nullptr; // owned
};

} // namespace Bv_1_1
