#pragma once

#include "bench/Loops.h"
#include "bench/workload/MemoryStream.h"

#include <algorithm>
#include <cstddef>
#include <istream>
#include <memory>
#include <ostream>
#include <span>
#include <stdexcept>
#include <vector>

namespace bench
{

/// The benchmarks of a stream format. `Format` has the type `Store`, the functions make, write and read, and
/// writeThroughTree and readThroughTree, the same by way of the tree of objects that flatc generates.

template <typename Format>
using Writer = bool (*)(typename Format::Store const& store, std::ostream& stream);

/// Null if the stream cannot be read.
template <typename Format>
using Reader = std::shared_ptr<typename Format::Store> (*)(std::istream& stream);

/// Memory that the stream of each store fits into.
inline constexpr std::size_t roomForStream = 240'000'000;

/// Writes a stream into memory.
/// @return its size
template <typename Format>
std::size_t writeTo(std::span<char> memory, typename Format::Store const& store, Writer<Format> write)
{
    MemoryStreamBuffer buffer(memory);
    std::ostream stream(&buffer);
    if (!write(store, stream)) {
        throw std::runtime_error("the stream could not be written");
    }
    return buffer.written();
}

template <typename Format>
std::shared_ptr<typename Format::Store> readFrom(std::span<char> memory, Reader<Format> read)
{
    MemoryStreamBuffer buffer(memory);
    std::istream stream(&buffer);
    auto store = read(stream);
    if (!store) {
        throw std::runtime_error("the stream could not be read");
    }
    return store;
}

/// A store, and its stream in memory.
template <typename Format>
struct StreamInput
{
    StreamInput()
    {
        requireSameStream(store, Format::writeThroughTree);
        auto const fromTree = readFrom<Format>(memory, Format::readThroughTree);
        // A store that was read may list its devices in another order than the one that was written.
        size = writeTo<Format>(memory, *readFrom<Format>(memory, Format::read), Format::write);
        requireSameStream(*fromTree, Format::write);
    }

    // Only methods that give the same result can be compared.
    void requireSameStream(typename Format::Store const& other, Writer<Format> write)
    {
        std::vector<char> const expected(memory.begin(), memory.begin() + static_cast<std::ptrdiff_t>(size));
        if (writeTo<Format>(memory, other, write) != size ||
            !std::equal(expected.begin(), expected.end(), memory.begin()))
        {
            throw std::logic_error("the store and the object tree give different streams");
        }
    }

    typename Format::Store store = Format::make();
    std::vector<char> memory = std::vector<char>(roomForStream);
    std::size_t size = writeTo<Format>(memory, store, Format::write);
};

template <typename Format>
StreamInput<Format>& streamInput()
{
    static StreamInput<Format> input;
    return input;
}

template <typename Format, Writer<Format> write>
void writing(benchmark::State& state)
{
    auto& input = streamInput<Format>();
    timeEach(state, [&input] { return writeTo<Format>(input.memory, input.store, write); });
}

template <typename Format, Reader<Format> read>
void reading(benchmark::State& state)
{
    auto& input = streamInput<Format>();
    timeEach(state, [&input] { return readFrom<Format>(input.memory, read); });
}

/// A stream in memory that was written by another process, so that writing it does not raise the peak of this
/// one.
template <typename Format>
struct WrittenStream
{
    WrittenStream()
    {
        size = static_cast<std::size_t>(inChild([this] {
            return static_cast<double>(writeTo<Format>(memory.bytes(), Format::make(), Format::write));
        }));
        // A page counts as memory of this process once it was read.
        auto const bytes = memory.bytes().first(size);
        benchmark::DoNotOptimize(std::count(bytes.begin(), bytes.end(), 'x'));
    }

    SharedMemory memory{roomForStream};
    std::size_t size = 0;
};

template <typename Format, Writer<Format> write>
void peakOfWriting(benchmark::State& state)
{
    struct StoreAndRoom
    {
        typename Format::Store store = Format::make();
        std::vector<char> room = std::vector<char>(roomForStream);
    };
    measurePeakMemory<StoreAndRoom>(
        state, [](StoreAndRoom& all) { return writeTo<Format>(all.room, all.store, write); });
}

template <typename Format, Reader<Format> read>
void peakOfReading(benchmark::State& state)
{
    measurePeakMemory<WrittenStream<Format>>(
        state, [](WrittenStream<Format>& stream) { return readFrom<Format>(stream.memory.bytes(), read); });
}

} // namespace bench
