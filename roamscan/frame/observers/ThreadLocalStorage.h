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

/// What observers and attributes keep for each thread.
struct ThreadDataType
{
    /// Non-zero while the thread works on cached attribute values: changes then resolve the values that
    /// CachedAttributeInfo records hold.
    std::uint32_t cachedPathCount = 0;

    /// Whether the attribute that is about to be made, or that was destroyed last, lives in a container's
    /// block. Such an attribute is destroyed but not freed. Cleared before an attribute is made on the heap.
    std::uint8_t attributeInBlock = 0;

    /// Whether a CachedAttributeInfo record may hold a pending value (Attribute::isCachedAttributePending).
    bool cachedAttributePending = false;

    /// How many BlockObserving scopes are open.
    std::uint32_t observingBlocks = 0;

    /// The table of the copy operation that is under way, or null (Observer::srcToCopyTable).
    ObserverRelationTable* srcToCopyTable = nullptr;

    /// The block of the attribute that was destroyed last, if attributeInBlock is set and the block is one
    /// of the library's; else null.
    detail::AttributeBlock* blockOfAttribute = nullptr;
};

/// Gives each thread its own data.
class ROAMSCAN_EXPORT ThreadLocalStorage
{
public:
    /// The one storage of the process.
    [[nodiscard]] static ThreadLocalStorage& the() noexcept;

    /// The calling thread's data, or null if the thread has not needed any yet.
    [[nodiscard]] ThreadDataType* getData() const noexcept;

    /// The calling thread's data, which exists from now on. It starts with zeros.
    ThreadDataType& makeData() const noexcept;

private:
    constexpr ThreadLocalStorage() noexcept = default;
};

} // namespace oV
