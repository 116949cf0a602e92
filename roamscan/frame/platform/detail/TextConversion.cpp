#include <roamscan/frame/platform/detail/TextConversion.h>

#include <utf8.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <stdexcept>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace oV::Roamscan::detail
{

std::u16string utf16FromUtf8(std::string_view text)
{
    std::string valid;
    valid.reserve(text.size());
    utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid));
    std::u16string result;
    result.reserve(valid.size());
    utf8::unchecked::utf8to16(valid.begin(), valid.end(), std::back_inserter(result));
    return result;
}

std::string utf8FromUtf16(std::u16string_view text)
{
    constexpr char32_t replacement = 0xFFFD;
    auto const isLead = [](char16_t unit) { return (unit & 0xFC00) == 0xD800; };
    auto const isTrail = [](char16_t unit) { return (unit & 0xFC00) == 0xDC00; };
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t codePoint = text[i];
        if (isLead(text[i]) && i + 1 < text.size() && isTrail(text[i + 1])) {
            ++i;
            codePoint = 0x10000 + ((codePoint & 0x3FF) << 10) + (text[i] & char32_t{0x3FF});
        } else if (isLead(text[i]) || isTrail(text[i])) {
            codePoint = replacement;
        }
        utf8::append(codePoint, std::back_inserter(result));
    }
    return result;
}

#if defined(_WIN32)

namespace
{

int checkedSize(std::size_t size)
{
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw std::length_error("The text is too long");
    }
    return static_cast<int>(size);
}

} // namespace

std::u16string utf16FromNarrow(std::string_view text, int codePage)
{
    bool const isDefault = codePage == defaultCodePage || codePage == CP_ACP;
    UINT const page = isDefault ? GetACP() : static_cast<UINT>(codePage);
    if (page == CP_UTF8) {
        return utf16FromUtf8(text);
    }
    if (text.empty()) {
        return {};
    }
    int const size = checkedSize(text.size());
    int const units = MultiByteToWideChar(page, 0, text.data(), size, nullptr, 0);
    if (units <= 0) {
        throw std::invalid_argument("No such code page");
    }
    std::u16string result(static_cast<std::size_t>(units), u'\0');
    MultiByteToWideChar(page, 0, text.data(), size, reinterpret_cast<wchar_t*>(result.data()), units);
    return result;
}

std::string narrowFromUtf16(std::u16string_view text)
{
    if (GetACP() == CP_UTF8) {
        return utf8FromUtf16(text);
    }
    if (text.empty()) {
        return {};
    }
    auto const* const units = reinterpret_cast<wchar_t const*>(text.data());
    int const size = checkedSize(text.size());
    int const bytes = WideCharToMultiByte(CP_ACP, 0, units, size, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(bytes), '\0');
    WideCharToMultiByte(CP_ACP, 0, units, size, result.data(), bytes, nullptr, nullptr);
    return result;
}

#else

std::u16string utf16FromNarrow(std::string_view text, int codePage)
{
    constexpr int utf8CodePage = 65001;
    if (codePage != defaultCodePage && codePage != 0 && codePage != utf8CodePage) {
        throw std::invalid_argument("This platform has no code page but UTF-8");
    }
    return utf16FromUtf8(text);
}

std::string narrowFromUtf16(std::u16string_view text)
{
    return utf8FromUtf16(text);
}

#endif

std::u16string utf16FromWide(std::wstring_view text)
{
    std::u16string result;
    result.reserve(text.size());
    for (wchar_t const character : text) {
        auto const codePoint = static_cast<char32_t>(character);
        if (codePoint <= 0xFFFF) {
            result.push_back(static_cast<char16_t>(codePoint));
        } else if (codePoint <= 0x10FFFF) {
            result.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
            result.push_back(static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF)));
        } else {
            result.push_back(u'\uFFFD');
        }
    }
    return result;
}

} // namespace oV::Roamscan::detail
