#pragma once

#include <roamscan/frame/bvbase/CodePageInterface.h>
#include <roamscan/frame/platform/Export.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Bv_1_1
{

/// The text that strings share: a header with a reference count, followed by the text in UTF-16 with a
/// terminating zero. The text is immutable, and therefore thread-safe.
///
/// The functions below create a value with a reference count of 1. The caller owns that reference.
class ROAMSCAN_EXPORT StringVal
{
public:
    StringVal(StringVal const&) = delete;
    StringVal& operator=(StringVal const&) = delete;

    /// Creates a value from narrow text. Malformed sequences become U+FFFD.
    /// @param text the text; may be null
    /// @param length the number of bytes, or -1 for all up to the terminating zero
    /// @param codePage the encoding, or -1 for the platform's default (UTF-8, except on Windows)
    /// @return null for null text
    /// @throws std::invalid_argument if the platform does not support the code page; except on Windows, only
    ///     UTF-8 is supported (65001, or 0)
    [[nodiscard]] static StringVal* construct(char const* text, int length, int codePage);

    /// The same for a text that names its code page. A `codePage` other than -1 overrides that one.
    [[nodiscard]] static StringVal*
    constructUsingCodepage(CodePageInterface source, int length, int codePage);

    /// Creates the concatenation of two texts in UTF-16. Unpaired surrogates are kept.
    /// @throws std::length_error if the length does not fit an `int`
    [[nodiscard]] static StringVal* constructFromUtf16(std::u16string_view first,
                                                       std::u16string_view second = {});

    /// Adds one reference.
    void ref() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }

    /// Removes one reference, and frees the value with the last one.
    /// @return whether the value was freed
    bool unref() noexcept;

    /// The number of 16-bit units.
    [[nodiscard]] int length() const noexcept { return length_; }

    /// The text. A terminating zero follows it.
    [[nodiscard]] std::u16string_view text() const noexcept
    {
        return {reinterpret_cast<char16_t const*>(this + 1), static_cast<std::size_t>(length_)};
    }

    /// A hash of the text, computed at the first call. It differs between platforms. Thread-safe.
    [[nodiscard]] std::size_t hash() const noexcept
    {
        std::size_t const known = hash_.load(std::memory_order_relaxed);
        return known != unknownHash ? known : computeHash();
    }

    /// The text in the narrow encoding, converted at the first call and valid until the value is freed.
    /// Unpaired surrogates become U+FFFD. Thread-safe.
    [[nodiscard]] char const* narrow() const;

private:
    friend class String;

    explicit constexpr StringVal(int length) noexcept : length_(length) {}
    ~StringVal() = default;

    std::size_t computeHash() const noexcept;

    static constexpr std::size_t unknownHash = 0;

    std::atomic<std::uint32_t> references_ = 1; // first member: part of the binary interface
    std::int32_t length_;
    mutable std::atomic<char const*> narrow_ = nullptr; // owned
    mutable std::atomic<std::size_t> hash_ = unknownHash;
};

} // namespace Bv_1_1
