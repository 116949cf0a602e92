#pragma once

#include "Seeds.h"

#include <roamscan/frame/platform/LittleEndian.h>

#include <flatbuffers/flatbuffers.h>

#include <cstdint>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>

/// Shared by the seeds of the stream formats. See StreamInput.h for the first byte of an input.
namespace fuzz
{

constexpr char asStream = 0;
constexpr char asBuffer = 1;

/// The stream that a store writes.
template <typename Store>
std::string streamOf(Store const& store)
{
    std::ostringstream stream;
    if (!store.write(stream)) {
        throw std::runtime_error("cannot write a store");
    }
    return stream.str();
}

/// The stream without its byte count.
inline std::string bufferOf(std::string const& stream)
{
    return stream.substr(sizeof(std::uint64_t));
}

inline std::string bufferOf(flatbuffers::FlatBufferBuilder const& builder)
{
    return {reinterpret_cast<char const*>(builder.GetBufferPointer()), builder.GetSize()};
}

inline std::string withCount(std::uint64_t count, std::string const& buffer)
{
    auto const bytes = oV::Roamscan::toLittleEndian(count);
    return std::string(bytes.begin(), bytes.end()) + buffer;
}

/// Saves a stream as it is, as a buffer, truncated, with wrong byte counts, and with another stream after it.
inline void
saveVariants(std::filesystem::path const& folder, std::string const& stream, std::string const& next)
{
    std::string const buffer = bufferOf(stream);
    save(folder / "empty-input", asStream, "");
    save(folder / "empty-buffer", asStream, withCount(0, ""));
    save(folder / "small-store", asStream, stream);
    save(folder / "small-store-buffer", asBuffer, buffer);
    save(folder / "two-streams", asStream, stream + next);
    save(folder / "truncated", asStream, stream.substr(0, stream.size() - 5));
    save(folder / "truncated-count", asStream, stream.substr(0, 5));
    save(folder / "truncated-buffer", asBuffer, buffer.substr(0, 60));
    save(folder / "count-too-large", asStream, withCount(stream.size(), buffer));
    save(folder / "count-of-gigabytes", asStream, withCount(std::uint64_t{1} << 34U, buffer));
    save(folder / "count-of-all-ones", asStream, withCount(~std::uint64_t{0}, buffer));
}

} // namespace fuzz
