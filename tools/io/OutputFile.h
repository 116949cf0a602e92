#pragma once

#include "tools/io/Output.h"

#include <cstdint>
#include <filesystem>
#include <fstream>

namespace oV::Roamscan::tool
{

/// How an output is written.
enum class Writing : std::uint8_t
{
    InOrder,
    WithSeeking ///< The stream is repositioned.
};

/// A file that appears under its name only when it is complete. The name "-" stands for the standard output.
/// It receives the bytes as they are written, or all of them at the end if the stream is to be repositioned.
class OutputFile : public Output
{
public:
    /// @throws ToolError if the file cannot be created, or the target exists and is not a regular file
    explicit OutputFile(std::filesystem::path const& target, Writing writing = Writing::InOrder);

    [[nodiscard]] std::ostream& stream() { return *stream_; }

private:
    void finish() override;
    void requireFile(std::filesystem::path const& name) const;
    void create(std::filesystem::path const& name);
    void copyToStandardOutput() const;

    std::ofstream file_;
    std::ostream* stream_;
};

} // namespace oV::Roamscan::tool
