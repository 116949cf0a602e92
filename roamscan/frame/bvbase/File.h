#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/Directory.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

namespace Bv_1_1
{

/// The place of a file, which may be there or not. A value that never changes, so any number of threads may
/// use one.
class ROAMSCAN_EXPORT File : public BaseNode
{
public:
    /// The file of this path, relative to the current directory unless the path is absolute.
    [[nodiscard]] static SmartPtr<File> fromPath(String const& path);

    /// The file of this name in the directory. A name that is an absolute path is taken as a relative one;
    /// ".." in it goes up and out of the directory, as in any path.
    [[nodiscard]] static SmartPtr<File> fromString(Directory const& directory, String const& name);

    /// The record of this class.
    [[nodiscard]] static oVClass const* Class();

    File(File const&) = delete;
    File& operator=(File const&) = delete;

    [[nodiscard]] oVClass const* getClassType() const override;

    /// The name without the extension: "pano" of "walk/pano.png", "a.b" of "a.b.png". A point at the
    /// beginning of a name begins no extension.
    [[nodiscard]] virtual String getName() const;

    /// Whether a file is there. What is there under the name but is no file, such as a directory, does not
    /// count.
    [[nodiscard]] virtual bool exists() const;

    /// The full path: the directory's, then the name with the extension.
    [[nodiscard]] virtual String getPath() const;

    /// The extension without its point: "png" of "walk/pano.png". Empty if there is none.
    // NOLINTNEXTLINE(readability-const-return-type): part of the interface
    [[nodiscard]] String const getExtension() const;

    /// The directory that the file is in.
    [[nodiscard]] SmartPtr<Directory const> getDirectory() const;

protected:
    ~File() override;

private:
    explicit File(String const& path);

    String path_;
};

} // namespace Bv_1_1
