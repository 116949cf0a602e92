#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstdint>
#include <istream>
#include <memory>
#include <ostream>
#include <vector>

namespace bench
{

/// A tree of objects to and from a length-prefixed buffer in a stream: the 64-bit byte count, then the
/// buffer.

template <typename Root>
[[nodiscard]] bool writeTree(typename Root::NativeTableType const& tree, std::ostream& stream)
{
    flatbuffers::FlatBufferBuilder builder;
    builder.Finish(Root::Pack(builder, &tree));
    std::uint64_t const count = flatbuffers::EndianScalar(std::uint64_t{builder.GetSize()});
    stream.write(reinterpret_cast<char const*>(&count), sizeof count);
    stream.write(reinterpret_cast<char const*>(builder.GetBufferPointer()),
                 static_cast<std::streamsize>(builder.GetSize()));
    return stream.good();
}

/// What readTree() returns. A simple program keeps the buffer until the store is filled.
template <typename Root>
struct TreeAndBuffer
{
    std::vector<char> buffer;
    std::unique_ptr<typename Root::NativeTableType> tree; ///< Null if the stream is truncated or not valid.
};

template <typename Root>
[[nodiscard]] TreeAndBuffer<Root> readTree(std::istream& stream)
{
    std::uint64_t count = 0;
    stream.read(reinterpret_cast<char*>(&count), sizeof count);
    if (!stream.good()) {
        return {};
    }
    TreeAndBuffer<Root> result{std::vector<char>(flatbuffers::EndianScalar(count)), nullptr};
    stream.read(result.buffer.data(), static_cast<std::streamsize>(result.buffer.size()));
    auto const* const data = reinterpret_cast<std::uint8_t const*>(result.buffer.data());
    flatbuffers::Verifier verifier(data, result.buffer.size());
    if (stream.good() && verifier.VerifyBuffer<Root>(nullptr)) {
        result.tree.reset(flatbuffers::GetRoot<Root>(data)->UnPack());
    }
    return result;
}

} // namespace bench
