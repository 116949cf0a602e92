#include <roamscan/frame/bvbase/detail/FilePath.h>

namespace Bv_1_1::detail
{

std::filesystem::path pathFromString(String const& text)
{
#if defined(_WIN32)
    return {std::u16string(text.text())}; // UTF-16 is lossless on every platform, narrow text is not
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
