#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

namespace support
{

/// UTF-8 text as a path, whatever the narrow encoding is.
inline std::filesystem::path pathOf(std::string_view utf8)
{
    return std::u8string(utf8.begin(), utf8.end());
}

/// A path as UTF-8 text.
inline std::string utf8(std::filesystem::path const& path)
{
    std::u8string const text = path.u8string();
    return {text.begin(), text.end()};
}

/// A path that is also accepted as text, UTF-8, for example as an argument of a program. Most systems accept
/// std::filesystem::path as narrow text, but Windows does not.
class TestPath : public std::filesystem::path
{
public:
    explicit TestPath(std::filesystem::path value) : std::filesystem::path(std::move(value)) {}

    [[nodiscard]] std::string string() const { return utf8(*this); }
    operator std::string() const { return string(); } // NOLINT(google-explicit-constructor): see above
};

} // namespace support
