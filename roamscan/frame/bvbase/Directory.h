#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

namespace Bv_1_1
{

/// The path of a directory, which need not exist. Immutable, and therefore thread-safe.
class ROAMSCAN_EXPORT Directory : public BaseNode
{
public:
    /// The directory at `path`. Relative paths are relative to the current directory. An empty path denotes
    /// the current directory.
    [[nodiscard]] static SmartPtr<Directory const> fromPath(String const& path);

    /// The record of this class.
    [[nodiscard]] static oVClass const* Class();

    Directory(Directory const&) = delete;
    Directory& operator=(Directory const&) = delete;

    [[nodiscard]] oVClass const* getClassType() const override;

    /// Creates the directory on disk, with all missing parents.
    /// @return whether the directory exists afterwards; also true if it existed before
    [[nodiscard]] bool create() const;

    /// The subdirectory `name`. An empty name denotes the directory itself. If `name` is an absolute path,
    /// its root is removed: "/tmp" denotes the subdirectory "tmp".
    /// @warning `..` in the name leaves the directory, as in any path.
    [[nodiscard]] SmartPtr<Directory const> appendLevel(String const& name) const;

    /// The path as given at construction.
    [[nodiscard]] String const& getPath() const noexcept { return path_; }

protected:
    ~Directory() override;

private:
    ROAMSCAN_NO_EXPORT explicit Directory(String const& path);

    String path_;
};

} // namespace Bv_1_1
