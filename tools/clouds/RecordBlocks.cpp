#include "tools/clouds/RecordBlocks.h"

#include "tools/console/ToolError.h"

#include <algorithm>
#include <string>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

// Small enough that a block stays in the cache of a core until it is written.
constexpr std::size_t recordBytesAtOnce = 1U << 17;

} // namespace

RecordBlocks::RecordBlocks(CloudInput input, std::uint64_t recordCount, std::size_t recordSize)
    : input_(std::move(input)), count_(recordCount), size_(recordSize)
{
    std::uint64_t const available = input_.remaining();
    if (available / size_ < count_) { // a product could overflow
        throw fileError(input_.name,
                        "the header promises " + std::to_string(count_) + " points of " +
                            std::to_string(size_) + " bytes, but " + std::to_string(available) +
                            " bytes follow it; the file is cut off or damaged");
    }
}

bool RecordBlocks::read(RawBlock& raw)
{
    raw.first = next_;
    raw.count =
        static_cast<std::size_t>(std::min<std::uint64_t>(recordBytesAtOnce / size_ + 1, count_ - next_));
    raw.bytes.resize(raw.count * size_);
    if (raw.count == 0) {
        return false;
    }
    input_.stream->read(raw.bytes.data(), static_cast<std::streamsize>(raw.bytes.size()));
    if (!*input_.stream) {
        throw fileError(input_.name, "cannot be read beyond point " + std::to_string(next_));
    }
    next_ += raw.count;
    return true;
}

} // namespace oV::Roamscan::tool
