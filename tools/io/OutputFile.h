#pragma once

#include "tools/io/Output.h"

#include <filesystem>
#include <fstream>

namespace oV::Roamscan::tool
{

/// A file that appears under its name only when it is complete.
class OutputFile : public Output
{
public:
    /// @throws ToolError if the file cannot be created, or the target exists and is not a regular file
    explicit OutputFile(std::filesystem::path const& target);

    [[nodiscard]] std::ostream& stream() { return stream_; }

private:
    void finish() override;

    std::ofstream stream_;
};

} // namespace oV::Roamscan::tool
