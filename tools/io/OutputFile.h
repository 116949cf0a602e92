#pragma once

#include "tools/io/Output.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>

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

    std::unique_ptr<std::filebuf> buffer_; // nullptr if the bytes go to the standard output at once
    std::ostream file_;                    // writes to the buffer
    std::ostream* stream_;
};

} // namespace oV::Roamscan::tool
