#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace oV::detail
{

/// One piece of memory for the static attributes that a container makes from one definition table. It lives
/// as long as its container or any of its attributes, which others may hold beyond the container's life.
class AttributeBlock
{
public:
    /// A new block with one reference, which is the caller's.
    explicit AttributeBlock(std::size_t size) : memory_(std::make_unique<std::byte[]>(size)) {}

    AttributeBlock(AttributeBlock const&) = delete;
    AttributeBlock& operator=(AttributeBlock const&) = delete;

    /// Where `offset` is; aligned as the offset is.
    [[nodiscard]] void* at(std::size_t offset) noexcept { return memory_.get() + offset; }

    void ref() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }

    /// Drops a reference; the last one frees the memory.
    void unref() noexcept
    {
        if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }

private:
    ~AttributeBlock() = default;

    std::unique_ptr<std::byte[]> memory_;
    std::atomic<std::uint32_t> references_ = 1;
};

} // namespace oV::detail
