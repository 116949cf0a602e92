#pragma once

#include <roamscan/frame/bvbase/String.h>

#include <filesystem>

namespace Bv_1_1::detail
{

/// The text as a path of the platform. NIL is the empty path.
[[nodiscard]] std::filesystem::path pathFromString(String const& text);

/// The path as text, with the separators that it has. What is not in the encoding of narrow text becomes
/// U+FFFD.
[[nodiscard]] String stringFromPath(std::filesystem::path const& path);

/// The path of `name` inside `directory`, also if the name by itself would be an absolute path.
[[nodiscard]] std::filesystem::path pathInside(std::filesystem::path const& directory, String const& name);

} // namespace Bv_1_1::detail
