#pragma once

#include <flatbuffers/flatbuffers.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace oV::Roamscan::detail
{

/// Counts the bytes that a flatbuffers::FlatBufferBuilder takes, so that a buffer is allocated at its full
/// size and one that is too large is refused before it is built. Call the functions in the order of the
/// builder's: the order decides the padding.
///
/// The count is exact except for the vtables, which the builder writes once for each layout of a table.
class FlatBufferSize
{
public:
    /// A field of the table under construction: a scalar, a struct or an offset.
    template <typename T>
    void addField()
    {
        grow(sizeof(T), alignof(T));
    }

    void endTable() { addField<flatbuffers::soffset_t>(); }

    template <typename T>
    void addVector(std::size_t count)
    {
        grow(count * sizeof(T), std::max(alignof(T), alignof(flatbuffers::uoffset_t)));
        addField<flatbuffers::uoffset_t>();
    }

    /// @param length the bytes of the text, without the terminator
    void addString(std::size_t length) { addVector<char>(length + 1); }

    /// @return an upper bound of the finished buffer's size, at most `allowance` bytes above it
    [[nodiscard]] std::uint64_t bound() const { return size_ + allowance; }

    /// Room for the root's offset, for the vtables and their padding, and for the builder's own records of
    /// them. A stream format has at most some forty layouts of tables.
    static constexpr std::uint64_t allowance = 1024;

private:
    // The builder fills the buffer from its end: the padding goes before the element, to its alignment.
    void grow(std::uint64_t bytes, std::uint64_t alignment)
    {
        size_ = (size_ + bytes + alignment - 1) / alignment * alignment;
    }

    std::uint64_t size_ = 0;
};

} // namespace oV::Roamscan::detail
