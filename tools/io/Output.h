#pragma once

#include "tools/io/Temporary.h"

#include <filesystem>
#include <initializer_list>
#include <string>

namespace oV::Roamscan::tool
{

/// A file or folder that appears under its name only when it is complete (write-then-rename): it is written
/// under a temporary name in the folder of its target, and commit() renames it. Without commit(), the
/// temporary is removed and the target is unchanged. What is replaced hands on its mode, and is not replaced
/// if it is read-only.
class Output
{
public:
    Output(Output const&) = delete;
    Output& operator=(Output const&) = delete;
    virtual ~Output() = default;

    /// The final name. Symbolic links are followed, so that the file they point to is replaced, not the link.
    [[nodiscard]] std::filesystem::path const& target() const { return target_; }

    /// Finishes the output and gives it its name.
    /// @throws ToolError; the target is then unchanged
    void commit() { commitAll({this}); }

    /// Finishes every output before the first one gets its name. Null pointers are skipped.
    /// @throws ToolError; no target has changed if an output could not be finished
    static void commitAll(std::initializer_list<Output*> outputs);

protected:
    /// @param extension of the files in a folder of tiles, as Temporary takes it
    /// @throws ToolError if the target is read-only, or a link that cannot be followed
    explicit Output(std::filesystem::path const& target,
                    Temporary::Kind kind = Temporary::Kind::File,
                    std::string const& extension = {});

    [[nodiscard]] std::filesystem::path const& temporary() const { return temporary_.path(); }

    /// Gives the temporary the mode of the target, if there is one.
    /// @throws ToolError if it cannot be changed
    void takeModeOfTarget() const;

    /// Finishes the writing and makes sure that the target may be replaced.
    virtual void finish() = 0;

private:
    void putInPlace();

    std::filesystem::path target_;
    Temporary temporary_;
};

/// @throws ToolError if two of the paths name the same file; empty paths and "-" do not count
void requireDistinctFiles(std::initializer_list<std::filesystem::path> paths);

} // namespace oV::Roamscan::tool
