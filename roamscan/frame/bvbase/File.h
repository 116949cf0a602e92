#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/Directory.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

namespace Bv_1_1
{

/// The path of a file, which need not exist. Immutable, and therefore thread-safe.
class ROAMSCAN_EXPORT File : public BaseNode
{
public:
    /// The file at `path`. A relative path is relative to the current directory.
    [[nodiscard]] static SmartPtr<File> fromPath(String const& path);

    /// The file `name` in the directory. If `name` is an absolute path, its root is removed.
    /// @warning `..` in the name leaves the directory, as in any path.
    [[nodiscard]] static SmartPtr<File> fromString(Directory const& directory, String const& name);

    /// The record of this class.
    [[nodiscard]] static oVClass const* Class();

    File(File const&) = delete;
    File& operator=(File const&) = delete;

    [[nodiscard]] oVClass const* getClassType() const override;

    /// The name without the extension: "pano" for "walk/pano.png", "a.b" for "a.b.png". A leading dot does
    /// not start an extension.
    [[nodiscard]] virtual String getName() const;

    /// Whether the file exists. False for a directory.
    [[nodiscard]] virtual bool exists() const;

    /// The whole path: directory, name and extension.
    [[nodiscard]] virtual String getPath() const;

    /// The extension without its dot: "png" for "walk/pano.png". Empty if there is none.
    // NOLINTNEXTLINE(readability-const-return-type): part of the interface
    [[nodiscard]] String const getExtension() const;

    /// The directory that contains the file.
    [[nodiscard]] SmartPtr<Directory const> getDirectory() const;

protected:
    ~File() override;

private:
    ROAMSCAN_NO_EXPORT explicit File(String const& path);

    String path_;
};

} // namespace Bv_1_1
