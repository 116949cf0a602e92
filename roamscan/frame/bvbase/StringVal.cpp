#include <roamscan/frame/bvbase/StringVal.h>
#include <roamscan/frame/platform/detail/TextConversion.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

namespace Bv_1_1
{

namespace
{

std::string_view narrowView(char const* text, int length)
{
    return length < 0 ? std::string_view(text) : std::string_view(text, static_cast<std::size_t>(length));
}

} // namespace

StringVal* StringVal::construct(char const* text, int length, int codePage)
{
    if (text == nullptr) {
        return nullptr;
    }
    return constructFromUtf16(oV::Roamscan::detail::utf16FromNarrow(narrowView(text, length), codePage));
}

StringVal* StringVal::constructUsingCodepage(CodePageInterface source, int length, int codePage)
{
    bool const useOwnCodePage = codePage == oV::Roamscan::detail::defaultCodePage;
    return construct(source.text, length, useOwnCodePage ? static_cast<int>(source.codePage) : codePage);
}

StringVal* StringVal::constructFromUtf16(std::u16string_view first, std::u16string_view second)
{
    constexpr auto longest = static_cast<std::size_t>(std::numeric_limits<int>::max());
    if (first.size() > longest || second.size() > longest - first.size()) {
        throw std::length_error("The text is too long for a string");
    }
    std::size_t const length = first.size() + second.size();
    void* const memory = ::operator new(sizeof(StringVal) + (length + 1) * sizeof(char16_t));
    auto* const value = new (memory) StringVal(static_cast<int>(length));
    auto* const units = reinterpret_cast<char16_t*>(value + 1);
    std::uninitialized_copy(
        second.begin(), second.end(), std::uninitialized_copy(first.begin(), first.end(), units));
    units[length] = u'\0';
    return value;
}

bool StringVal::unref() noexcept
{
    if (references_.fetch_sub(1, std::memory_order_acq_rel) != 1) {
        return false;
    }
    delete[] narrow_.load(std::memory_order_relaxed);
    this->~StringVal();
    ::operator delete(this);
    return true;
}

std::size_t StringVal::computeHash() const noexcept
{
    std::size_t const hash = std::hash<std::u16string_view>{}(text());
    hash_.store(hash, std::memory_order_relaxed);
    return hash;
}

char const* StringVal::narrow() const
{
    if (length_ == 0) {
        return "";
    }
    if (char const* const known = narrow_.load(std::memory_order_acquire)) {
        return known;
    }
    std::string const converted = oV::Roamscan::detail::narrowFromUtf16(text());
    auto made = std::make_unique<char[]>(converted.size() + 1);
    std::copy(converted.begin(), converted.end(), made.get());
    char const* expected = nullptr;
    if (narrow_.compare_exchange_strong(expected, made.get(), std::memory_order_acq_rel)) {
        return made.release();
    }
    return expected; // another thread stored its conversion first
}

} // namespace Bv_1_1
