#pragma once

#include <string>
#include <string_view>

namespace oV::Roamscan::detail
{

/// Converts UTF-8 to UTF-16. Each malformed sequence becomes U+FFFD.
[[nodiscard]] std::u16string utf16FromUtf8(std::string_view text);

/// Converts UTF-16 to UTF-8. Each unpaired surrogate becomes U+FFFD.
[[nodiscard]] std::string utf8FromUtf16(std::u16string_view text);

/// Denotes the platform's encoding of narrow text: the process's code page on Windows, elsewhere UTF-8.
inline constexpr int defaultCodePage = -1;

/// Converts narrow text to UTF-16. Each malformed sequence becomes U+FFFD.
/// @param text the narrow text
/// @param codePage its code page; except on Windows, only `defaultCodePage`, 0 (the default too) and 65001
///     (UTF-8) are supported
/// @throws std::invalid_argument if the platform does not support the code page
[[nodiscard]] std::u16string utf16FromNarrow(std::string_view text, int codePage);

/// Converts UTF-16 to narrow text in the default encoding. Characters that the encoding cannot represent are
/// replaced: in UTF-8 only unpaired surrogates, by U+FFFD.
[[nodiscard]] std::string narrowFromUtf16(std::u16string_view text);

/// Converts wide text to UTF-16. Where wide characters are 32 bits wide, code points beyond Unicode become
/// U+FFFD. Surrogates are kept, so UTF-16 text with one unit per wide character converts unchanged.
[[nodiscard]] std::u16string utf16FromWide(std::wstring_view text);

} // namespace oV::Roamscan::detail
