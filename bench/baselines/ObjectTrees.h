#pragma once

#include <roamscan/sensors/SensorData.h>
#include <roamscan/sensors/SensorFile_generated.h>
#include <roamscan/trajectorydata/TrajectoryData.h>
#include <roamscan/trajectorydata/TrajectoryFile_generated.h>

#include <flatbuffers/flatbuffers.h>

#include <cstdint>
#include <istream>
#include <memory>
#include <ostream>
#include <vector>

namespace bench
{

/// The streams by way of the tree of objects that flatc generates for a schema, as a simple program would do
/// it: from the store to the tree to the builder to the stream, and back.

[[nodiscard]] oV::Roamscan::TrajectorySchema::TrajectoryFileT
toTree(oV::Roamscan::TrajectoryData const& store);
[[nodiscard]] oV::Roamscan::SensorSchema::SensorDataRootT toTree(oV::Roamscan::SensorData const& store);

/// Null if a pose or a matrix of a node is missing.
[[nodiscard]] std::shared_ptr<oV::Roamscan::TrajectoryData>
fromTree(oV::Roamscan::TrajectorySchema::TrajectoryFileT const& tree);
[[nodiscard]] std::shared_ptr<oV::Roamscan::SensorData>
fromTree(oV::Roamscan::SensorSchema::SensorDataRootT const& tree);

/// Writes the 64-bit byte count of the buffer, then the buffer.
/// @tparam Root  the root table of the schema
template <typename Root>
[[nodiscard]] bool writeThroughTree(auto const& store, std::ostream& stream)
{
    auto const tree = toTree(store);
    flatbuffers::FlatBufferBuilder builder;
    builder.Finish(Root::Pack(builder, &tree));
    std::uint64_t const count = flatbuffers::EndianScalar(std::uint64_t{builder.GetSize()});
    stream.write(reinterpret_cast<char const*>(&count), sizeof count);
    stream.write(reinterpret_cast<char const*>(builder.GetBufferPointer()),
                 static_cast<std::streamsize>(builder.GetSize()));
    return stream.good();
}

/// @return the store; null if the stream is truncated or not valid
template <typename Root>
[[nodiscard]] auto readThroughTree(std::istream& stream)
    -> decltype(fromTree(typename Root::NativeTableType{}))
{
    std::uint64_t count = 0;
    if (!stream.read(reinterpret_cast<char*>(&count), sizeof count)) {
        return nullptr;
    }
    std::vector<char> buffer(flatbuffers::EndianScalar(count));
    stream.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    auto const* const data = reinterpret_cast<std::uint8_t const*>(buffer.data());
    if (!stream || !flatbuffers::Verifier(data, buffer.size()).VerifyBuffer<Root>(nullptr)) {
        return nullptr;
    }
    std::unique_ptr<typename Root::NativeTableType> const tree(flatbuffers::GetRoot<Root>(data)->UnPack());
    return fromTree(*tree);
}

} // namespace bench
