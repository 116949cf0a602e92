#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace oV::Roamscan::tool
{

// The tool's narrow text is UTF-8 on every platform. std::filesystem::path::string() and the constructor from
// narrow text convert to and from another encoding on Windows. Elsewhere, paths are any bytes, and these
// functions keep them.

[[nodiscard]] inline std::string utf8(std::filesystem::path const& path)
{
    std::u8string const text = path.u8string();
    return {text.begin(), text.end()};
}

[[nodiscard]] inline std::filesystem::path pathOfUtf8(std::string_view text)
{
    return std::u8string(text.begin(), text.end());
}

} // namespace oV::Roamscan::tool
