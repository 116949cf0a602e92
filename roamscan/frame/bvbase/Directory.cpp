#include <roamscan/frame/bvbase/Directory.h>
#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/detail/FilePath.h>
#include <roamscan/frame/bvbase/oVClass.h>

#include <filesystem>
#include <system_error>

namespace Bv_1_1
{

SmartPtr<Directory const> Directory::fromPath(String const& path)
{
    return SmartPtr<Directory const>(new Directory(path));
}

oVClass const* Directory::Class()
{
    static oVClass record(L"Directory", BaseNode::Class(), Module::library(), ClassVersion{0});
    return &record;
}

Directory::Directory(String const& path) : path_(path) {}
Directory::~Directory() = default;

oVClass const* Directory::getClassType() const
{
    return Class();
}

bool Directory::create() const
{
    std::filesystem::path const path = detail::pathFromString(path_);
    if (path.empty()) {
        return true; // the current directory
    }
    std::error_code failure;
    std::filesystem::create_directories(path, failure);
    return std::filesystem::is_directory(path, failure);
}

SmartPtr<Directory const> Directory::appendLevel(String const& name) const
{
    return fromPath(detail::stringFromPath(detail::pathInside(detail::pathFromString(path_), name)));
}

} // namespace Bv_1_1
