#include <roamscan/frame/bvbase/detail/FilePath.h>

#include <string>
#include <string_view>

namespace Bv_1_1::detail
{

std::filesystem::path pathFromString(String const& text)
{
#if defined(_WIN32)
    // Unit by unit: narrow text would lose characters, and a conversion of UTF-16 refuses unpaired
    // surrogates.
    std::u16string_view const units = text.text();
    return std::wstring(units.begin(), units.end());
#else
    return {text.stringAnsi()};
#endif
}

String stringFromPath(std::filesystem::path const& path)
{
#if defined(_WIN32)
    return String(path.c_str());
#else
    return String::fromNarrow(path.c_str());
#endif
}

std::filesystem::path pathInside(std::filesystem::path const& directory, String const& name)
{
    std::filesystem::path const inside = pathFromString(name).relative_path();
    return inside.empty() ? directory : directory / inside;
}

} // namespace Bv_1_1::detail
