#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

namespace Bv_1_1
{

/// The place of a directory, which may be there or not. A value that never changes, so any number of threads
/// may use one.
class ROAMSCAN_EXPORT Directory : public BaseNode
{
public:
    /// The directory of this path, relative to the current one unless the path is absolute. An empty path is
    /// the current directory.
    [[nodiscard]] static SmartPtr<Directory const> fromPath(String const& path);

    /// The record of this class.
    [[nodiscard]] static oVClass const* Class();

    Directory(Directory const&) = delete;
    Directory& operator=(Directory const&) = delete;

    [[nodiscard]] oVClass const* getClassType() const override;

    /// Makes the directory on disk, with those above it that are missing. True if it is there afterwards,
    /// also if it was before.
    [[nodiscard]] bool create() const;

    /// The sub-directory of this name. A name that is an absolute path is taken as a relative one; ".." in it
    /// goes up and out, as in any path. An empty name is the directory itself.
    [[nodiscard]] SmartPtr<Directory const> appendLevel(String const& name) const;

    /// The path, as it was given.
    [[nodiscard]] String const& getPath() const noexcept { return path_; }

protected:
    ~Directory() override;

private:
    explicit Directory(String const& path);

    String path_;
};

} // namespace Bv_1_1
