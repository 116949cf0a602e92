#pragma once

#include <filesystem>
#include <fstream>
#include <initializer_list>

namespace oV::Roamscan::tool
{

/// A file that appears under its name only when it is whole: it is written under a temporary name beside it,
/// and renamed by commit(). Without commit() the temporary is removed, and what stood under the name before
/// is as it was.
class OutputFile
{
public:
    /// @throws ToolError if the file cannot be made there, or something other than an ordinary file has the
    /// name
    explicit OutputFile(std::filesystem::path const& target);
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;
    ~OutputFile();

    [[nodiscard]] std::ostream& stream() { return stream_; }
    [[nodiscard]] std::filesystem::path const& target() const { return target_; }

    /// Ends the writing and makes sure that all of it arrived. Of several files that belong together, close
    /// each before committing the first.
    /// @throws ToolError if something could not be written
    void close();

    /// Closes the file if need be and gives it its name.
    /// @throws ToolError
    void commit();

private:
    std::filesystem::path target_;
    std::filesystem::path temporary_;
    std::ofstream stream_;
    bool closed_ = false;
    bool committed_ = false;
};

/// @throws ToolError if two of the paths name the same file; empty paths do not count
void requireDistinctFiles(std::initializer_list<std::filesystem::path> paths);

} // namespace oV::Roamscan::tool
