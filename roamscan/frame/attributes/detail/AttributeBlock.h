#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace oV::detail
{

/// The memory for the static attributes that a container creates from one definition table. It is freed when
/// the container and all of its attributes are destroyed. An attribute may outlive the container.
class AttributeBlock
{
public:
    /// A new block with one reference, which the caller owns.
    explicit AttributeBlock(std::size_t size) : memory_(std::make_unique<std::byte[]>(size)) {}

    AttributeBlock(AttributeBlock const&) = delete;
    AttributeBlock& operator=(AttributeBlock const&) = delete;

    /// The address at `offset`, with the alignment of the offset.
    [[nodiscard]] void* at(std::size_t offset) noexcept { return memory_.get() + offset; }

    void ref() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }

    /// Removes a reference. Removing the last one frees the memory.
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
