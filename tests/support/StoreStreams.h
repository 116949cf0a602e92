#pragma once

#include "tests/support/ByteStrings.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

/// Stores to and from byte strings. A format names the type of its store and gives a small one:
/// `Format::Store`, `Format::smallStore()`.
namespace support
{

template <typename Store>
std::string written(Store const& store)
{
    std::ostringstream stream(std::ios::binary);
    EXPECT_TRUE(store.write(stream));
    return stream.str();
}

/// @return null if the bytes are refused
template <typename Store>
std::shared_ptr<Store> readBack(std::string const& bytes)
{
    std::istringstream stream(bytes, std::ios::binary);
    return Store::read(stream);
}

/// The stream of an empty store, the same in both formats: the length, the root's offset, its vtable without
/// fields, and the root.
inline std::string emptyStoreStream()
{
    return u64(12) + u32(8) + u16(4) + u16(4) + u32(4);
}

/// The state of a stream after a failed read.
struct RefusedRead
{
    bool good;
    std::streamoff position;
};

/// Expects that the bytes are refused, and that a store which is read into keeps its contents.
template <typename Format>
RefusedRead expectRefused(std::string const& bytes)
{
    using Store = typename Format::Store;
    if constexpr (requires(Store store, std::istream & stream) { store.readFromStream(stream); }) {
        std::istringstream stream(bytes, std::ios::binary);
        Store store = Format::smallStore();
        EXPECT_FALSE(store.readFromStream(stream));
        EXPECT_EQ(written(store), written(Format::smallStore()));
    }
    std::istringstream stream(bytes, std::ios::binary);
    EXPECT_EQ(Store::read(stream), nullptr);
    bool const good = stream.good();
    stream.clear();
    return {good, stream.tellg()};
}

/// Expects that the bytes are refused once they have all been read, and nothing after them.
template <typename Format>
void expectRefusedAfterReading(std::string const& bytes)
{
    auto const refused = expectRefused<Format>(bytes + "rest");
    EXPECT_TRUE(refused.good);
    EXPECT_EQ(refused.position, static_cast<std::streamoff>(bytes.size()));
}

} // namespace support
