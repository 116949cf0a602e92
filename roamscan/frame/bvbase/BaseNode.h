#pragma once

#include <roamscan/frame/bvbase/VisitorCore.h>
#include <roamscan/frame/platform/Export.h>

#include <atomic>
#include <cstdint>

namespace Bv_1_1
{

class oVClass;

/// The base of all reference-counted objects with run-time class information.
///
/// A node is created by `new` with a reference count of 0. It is destroyed when its last reference is
/// removed, usually by a SmartPtr. A plain pointer to a node does not own it. The reference count is
/// thread-safe.
///
/// The order of the virtual operations, getClassType() and then the destructor, is part of the binary
/// interface.
class ROAMSCAN_EXPORT BaseNode : public VisitorCore
{
public:
    /// How a node is created.
    enum class CreateType : std::uint32_t
    {
        Fresh = 0,   ///< creates a new node; its class decides what it takes from a source object
        NoSource = 3 ///< creates a new node and ignores the source object
    };

    /// The value of the reference count after the last reference was removed. It makes a use after free
    /// visible in a memory dump; no code compares against it.
    static constexpr std::uint32_t releasedMark = 0xF000DEAD;

    /// The class record of BaseNode, the root of all class records.
    [[nodiscard]] static oVClass const* Class();

    /// The class record of the node's most derived class.
    [[nodiscard]] virtual oVClass const* getClassType() const;

    /// Adds one reference. Called by SmartPtr, and by code that passes on ownership without a SmartPtr.
    void addReference() const noexcept { references_.fetch_add(1, std::memory_order_relaxed); }

    /// Removes one reference. Removing the last one sets the count to `releasedMark` and destroys the node.
    /// @note The mark is set before the destructor runs. A reference that is added and removed during
    ///     destruction therefore does not destroy the node a second time.
    void dropReference() const noexcept
    {
        if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            references_.store(releasedMark, std::memory_order_relaxed);
            delete this;
        }
    }

    /// The current number of references. For tests and for finding leaks.
    [[nodiscard]] std::uint32_t referenceCount() const noexcept
    {
        return references_.load(std::memory_order_relaxed);
    }

protected:
    BaseNode() noexcept = default;
    /// The copy is a new node with a reference count of 0.
    BaseNode(BaseNode const& other) noexcept;
    /// The reference counts of both nodes stay unchanged.
    BaseNode& operator=(BaseNode const& other) noexcept;
    virtual ~BaseNode();

private:
    mutable std::atomic<std::uint32_t> references_ = 0;
};

} // namespace Bv_1_1
