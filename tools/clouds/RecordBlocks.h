#pragma once

#include "tools/clouds/CloudInput.h"
#include "tools/clouds/PointReader.h"

#include <cstddef>
#include <cstdint>

namespace oV::Roamscan::tool
{

/// Reads records of one size from a binary file in blocks.
class RecordBlocks
{
public:
    /// Takes over the input, at the first record.
    /// @param recordSize bytes, at least 1
    /// @throws ToolError if fewer bytes follow than the records take
    RecordBlocks(CloudInput input, std::uint64_t recordCount, std::size_t recordSize);

    [[nodiscard]] std::uint64_t count() const { return count_; }
    [[nodiscard]] std::size_t recordSize() const { return size_; }

    /// @return false at the end
    /// @throws ToolError if the file cannot be read
    [[nodiscard]] bool read(RawBlock& raw);

private:
    CloudInput input_;
    std::uint64_t count_;
    std::size_t size_;
    std::uint64_t next_ = 0;
};

} // namespace oV::Roamscan::tool
