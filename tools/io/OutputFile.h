#pragma once

#include "tools/io/Output.h"

#include <filesystem>
#include <fstream>

namespace oV::Roamscan::tool
{

/// A file that appears under its name only when it is complete. The name "-" stands for the standard output,
/// which receives the bytes as they are written.
class OutputFile : public Output
{
public:
    /// @throws ToolError if the file cannot be created, or the target exists and is not a regular file
    explicit OutputFile(std::filesystem::path const& target);

    [[nodiscard]] std::ostream& stream() { return *stream_; }

private:
    void finish() override;

    std::ofstream file_;
    std::ostream* stream_;
};

} // namespace oV::Roamscan::tool
