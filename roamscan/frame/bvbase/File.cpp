#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/detail/FilePath.h>
#include <roamscan/frame/bvbase/oVClass.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace Bv_1_1
{

SmartPtr<File> File::fromPath(String const& path)
{
    return SmartPtr<File>(new File(path));
}

SmartPtr<File> File::fromString(Directory const& directory, String const& name)
{
    auto const path = detail::pathInside(detail::pathFromString(directory.getPath()), name);
    return fromPath(detail::stringFromPath(path));
}

oVClass const* File::Class()
{
    static oVClass record(L"File", BaseNode::Class(), Module::library(), ClassVersion{0});
    return &record;
}

File::File(String const& path) : path_(path) {}
File::~File() = default;

oVClass const* File::getClassType() const
{
    return Class();
}

String File::getName() const
{
    return detail::stringFromPath(detail::pathFromString(path_).stem());
}

bool File::exists() const
{
    std::error_code failure;
    return std::filesystem::is_regular_file(detail::pathFromString(path_), failure);
}

String File::getPath() const
{
    return path_;
}

// NOLINTNEXTLINE(readability-const-return-type): part of the interface
String const File::getExtension() const
{
    // std::filesystem's extension includes the dot.
    std::filesystem::path::string_type const extension = detail::pathFromString(path_).extension().native();
    return detail::stringFromPath(extension.substr(extension.empty() ? 0 : 1));
}

SmartPtr<Directory const> File::getDirectory() const
{
    return Directory::fromPath(detail::stringFromPath(detail::pathFromString(path_).parent_path()));
}

} // namespace Bv_1_1
