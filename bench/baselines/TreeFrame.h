#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstdint>
#include <istream>
#include <memory>
#include <ostream>
#include <vector>

namespace bench
{

/// A tree of objects to and from a stream: the 64-bit byte count, and the buffer that the tree packs into.

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

/// A frame as it was read: the buffer, and the tree that it unpacks into. Whoever reads one the plain way has
/// both until the store is filled.
template <typename Root>
struct UnpackedFrame
{
    std::vector<char> buffer;
    std::unique_ptr<typename Root::NativeTableType>
        tree; ///< Null if the stream ended early or the buffer is not sound.
};

template <typename Root>
[[nodiscard]] UnpackedFrame<Root> readTree(std::istream& stream)
{
    std::uint64_t count = 0;
    stream.read(reinterpret_cast<char*>(&count), sizeof count);
    if (!stream.good()) {
        return {};
    }
    UnpackedFrame<Root> frame{std::vector<char>(flatbuffers::EndianScalar(count)), nullptr};
    stream.read(frame.buffer.data(), static_cast<std::streamsize>(frame.buffer.size()));
    auto const* const data = reinterpret_cast<std::uint8_t const*>(frame.buffer.data());
    flatbuffers::Verifier verifier(data, frame.buffer.size());
    if (stream.good() && verifier.VerifyBuffer<Root>(nullptr)) {
        frame.tree.reset(flatbuffers::GetRoot<Root>(data)->UnPack());
    }
    return frame;
}

} // namespace bench
