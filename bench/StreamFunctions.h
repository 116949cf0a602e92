#pragma once

#include "bench/Figure.h"
#include "bench/Loops.h"
#include "bench/baselines/ObjectTrees.h"
#include "bench/workload/MemoryStream.h"
#include "bench/workload/ScratchFiles.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench
{

/// The benchmarks of a stream format. `Format` has the type `Store` and the functions make, write and read,
/// the type `Root` of the object tree, a name, the unit of its times, `readName`, the name of the store's
/// function, and `contents`, which follows "writing" and "reading" in the names of figures.

template <typename Format>
using Writer = bool (*)(typename Format::Store const& store, std::ostream& stream);

/// Null if the stream cannot be read.
template <typename Format>
using Reader = std::shared_ptr<typename Format::Store> (*)(std::istream& stream);

template <typename Format>
inline constexpr Writer<Format> treeWriter = writeThroughTree<typename Format::Root>;

template <typename Format>
inline constexpr Reader<Format> treeReader = readThroughTree<typename Format::Root>;

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
std::shared_ptr<typename Format::Store> readFrom(std::istream& stream, Reader<Format> read)
{
    auto store = read(stream);
    if (!store) {
        throw std::runtime_error("the stream could not be read");
    }
    return store;
}

template <typename Format>
std::shared_ptr<typename Format::Store> readFrom(std::span<char> memory, Reader<Format> read)
{
    MemoryStreamBuffer buffer(memory);
    std::istream stream(&buffer);
    return readFrom<Format>(stream, read);
}

/// A store, and its stream in memory.
template <typename Format>
struct StreamInput
{
    StreamInput()
    {
        requireSameStream(store, treeWriter<Format>);
        auto const fromTree = readFrom<Format>(memory, treeReader<Format>);
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

/// Measures the time of `work` on the input. If the unit is a rate, the items are the bytes of the stream.
template <typename Format>
void timeOnStream(benchmark::State& state, auto const& work)
{
    auto& input = streamInput<Format>();
    timeEach(state, [&] { return work(input); });
    if (Format::unit.isRate) {
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(input.size));
    }
}

template <typename Format, Writer<Format> write>
void writing(benchmark::State& state)
{
    timeOnStream<Format>(state,
                         [](auto& input) { return writeTo<Format>(input.memory, input.store, write); });
}

template <typename Format, Reader<Format> read>
void reading(benchmark::State& state)
{
    timeOnStream<Format>(state, [](auto& input) { return readFrom<Format>(input.memory, read); });
}

/// A file with the stream of a store.
template <typename Format>
std::string streamFile()
{
    return writtenFile(Format::name, [](std::string const& path) {
        std::ofstream stream(path, std::ios::binary);
        if (!Format::write(Format::make(), stream)) {
            throw std::runtime_error("cannot write " + path);
        }
    });
}

template <typename Format, Writer<Format> write>
void peakOfWriting(benchmark::State& state)
{
    measurePeakMemory(state, Format::make, [](auto const& store) {
        std::ofstream nowhere("/dev/null", std::ios::binary);
        if (!write(store, nowhere)) {
            throw std::runtime_error("the stream could not be written");
        }
        return true;
    });
}

template <typename Format, Reader<Format> read>
void peakOfReading(benchmark::State& state)
{
    auto const open = [file = streamFile<Format>()] { return std::ifstream(file, std::ios::binary); };
    measurePeakMemory(state, open, [](std::istream& stream) { return readFrom<Format>(stream, read); });
}

/// The time of writing and of reading, against the object tree.
template <typename Format>
Group streamTime(double target)
{
    return {std::string("A ") + Format::name,
            Cost::ReportedTime,
            {{std::string("writing") + Format::contents,
              Format::unit,
              {"write", writing<Format, Format::write>},
              {{"object tree", writing<Format, treeWriter<Format>>, timesAsFast, target}}},
             {std::string("reading") + Format::contents,
              Format::unit,
              {Format::readName, reading<Format, Format::read>},
              {{"object tree", reading<Format, treeReader<Format>>, timesAsFast, target}}}}};
}

/// The peak memory of the same.
template <typename Format>
Group streamMemory(std::optional<double> target = std::nullopt)
{
    return {std::string("Peak memory of a ") + Format::name,
            Cost::PeakMemory,
            {{std::string("writing") + Format::contents,
              megabytes,
              {"write", peakOfWriting<Format, Format::write>},
              {{"object tree", peakOfWriting<Format, treeWriter<Format>>, timesTheMemory, target}}},
             {std::string("reading") + Format::contents,
              megabytes,
              {Format::readName, peakOfReading<Format, Format::read>},
              {{"object tree", peakOfReading<Format, treeReader<Format>>, timesTheMemory, target}}}}};
}

} // namespace bench
