#pragma once

#include <string>
#include <string_view>

namespace oV::Roamscan::detail
{

/// Stands for the encoding of narrow text on this platform: the process's code page on Windows, elsewhere
/// UTF-8.
inline constexpr int defaultCodePage = -1;

/// Narrow text as UTF-16. Each malformed sequence becomes U+FFFD.
///
/// Windows knows many code pages; elsewhere only the default, 0 (which stands for the default, too) and 65001
/// (UTF-8) exist.
/// @throws std::invalid_argument if the platform has no such code page
[[nodiscard]] std::u16string utf16FromNarrow(std::string_view text, int codePage);

/// UTF-16 as narrow text in the default encoding. What that cannot say is replaced: in UTF-8 only lone
/// surrogates, by U+FFFD.
[[nodiscard]] std::string narrowFromUtf16(std::u16string_view text);

/// Wide text as UTF-16. Where wide characters are code points, those beyond Unicode become U+FFFD; surrogates
/// stay as they are, so text that was stored unit by unit comes through.
[[nodiscard]] std::u16string utf16FromWide(std::wstring_view text);

} // namespace oV::Roamscan::detail
