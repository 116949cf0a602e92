#pragma once

#include <roamscan/frame/platform/Export.h>

#include <cstdint>

namespace oV
{

class ObserverRelationTable;

namespace detail
{
class AttributeBlock;
}

/// The data of observers and attributes for one thread.
struct ThreadDataType
{
    /// Non-zero while the thread is on the cached-value path: a change of an attribute then also resolves its
    /// pending value (CachedAttributeInfo).
    std::uint32_t cachedPathCount = 0;

    /// Whether the next attribute to be constructed, or the last attribute that was destroyed, is in the
    /// memory of a container's block. Such an attribute is destroyed but not freed. Cleared before an
    /// attribute is created on the heap.
    std::uint8_t attributeInBlock = 0;

    /// Whether a CachedAttributeInfo record may hold a pending value (Attribute::isCachedAttributePending).
    bool cachedAttributePending = false;

    /// The number of open BlockObserving scopes.
    std::uint32_t observingBlocks = 0;

    /// The table of the current copy operation, or null (Observer::srcToCopyTable).
    ObserverRelationTable* srcToCopyTable = nullptr;

    /// The block of the last attribute that was destroyed, if attributeInBlock is set and the library owns
    /// the block; otherwise null.
    detail::AttributeBlock* blockOfAttribute = nullptr;
};

/// Access to the data of the calling thread. Thread-safe.
class ROAMSCAN_EXPORT ThreadLocalStorage
{
public:
    /// The only instance.
    [[nodiscard]] static ThreadLocalStorage& the() noexcept;

    /// The calling thread's data, or null if makeData() was not called on this thread yet.
    [[nodiscard]] ThreadDataType* getData() const noexcept;

    /// The calling thread's data. Creates it, with zeros, if necessary.
    ThreadDataType& makeData() const noexcept;

private:
    constexpr ThreadLocalStorage() noexcept = default;
};

} // namespace oV
