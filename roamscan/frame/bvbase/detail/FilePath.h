#pragma once

#include <roamscan/frame/bvbase/String.h>

#include <filesystem>

namespace Bv_1_1::detail
{

/// Converts text to a path of the platform. NIL gives the empty path.
[[nodiscard]] std::filesystem::path pathFromString(String const& text);

/// Converts a path to text. The separators stay unchanged. Sequences that are malformed in the narrow
/// encoding become U+FFFD.
[[nodiscard]] String stringFromPath(std::filesystem::path const& path);

/// The path of `name` inside `directory`. If `name` is an absolute path, its root is removed.
[[nodiscard]] std::filesystem::path pathInside(std::filesystem::path const& directory, String const& name);

} // namespace Bv_1_1::detail
