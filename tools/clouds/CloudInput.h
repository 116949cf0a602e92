#pragma once

#include <cstdint>
#include <filesystem>
#include <istream>
#include <memory>

namespace oV::Roamscan::tool
{

/// A cloud's file, opened for reading.
struct CloudInput
{
    std::unique_ptr<std::istream> stream;
    std::uint64_t size = 0;     ///< Bytes.
    std::filesystem::path name; ///< For messages.

    /// The bytes from the current place to the end.
    [[nodiscard]] std::uint64_t remaining() const
    {
        auto const place = stream->tellg();
        auto const taken = place < 0 ? size : static_cast<std::uint64_t>(place);
        return taken < size ? size - taken : 0;
    }
};

} // namespace oV::Roamscan::tool
