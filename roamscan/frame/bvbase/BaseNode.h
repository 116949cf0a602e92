#pragma once

#include <roamscan/frame/bvbase/VisitorCore.h>
#include <roamscan/frame/platform/Export.h>

#include <atomic>
#include <cstdint>

namespace Bv_1_1
{

class oVClass;

/// The base of all objects that are counted and know their class at run time.
///
/// A node is made by `new` with no reference, and lives as long as a SmartPtr holds it. A plain pointer to a
/// node owns nothing. References may be taken and dropped on any thread.
///
/// The order of the virtual operations, getClassType() and then the destructor, is part of the binary
/// interface.
class ROAMSCAN_EXPORT BaseNode : public VisitorCore
{
public:
    /// How a node is made.
    enum class CreateType : std::uint32_t
    {
        Fresh = 0,   ///< a new node
        NoSource = 3 ///< no other node is to be used as a source
    };

    /// What the count of a node holds from its last release on. It makes a use after the release visible in a
    /// memory dump; nothing ever compares it.
    static constexpr std::uint32_t releasedMark = 0xF000DEAD;

    /// The record of this class, the root of all records.
    [[nodiscard]] static oVClass const* Class();

    /// The record of the node's own class.
    [[nodiscard]] virtual oVClass const* getClassType() const;

    /// Takes one reference. For SmartPtr, and for what hands nodes on without one.
    void addReference() const noexcept { references_.fetch_add(1, std::memory_order_relaxed); }

    /// Drops one reference; with the last one the count becomes the mark and the node is destroyed.
    void dropReference() const noexcept
    {
        if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            // Callers may rely on the mark being in place before the destructor runs: a reference that is
            // taken and dropped while the node goes down does not release it a second time.
            references_.store(releasedMark, std::memory_order_relaxed);
            delete this;
        }
    }

    /// The number of references at this moment. For tests and for finding leaks.
    [[nodiscard]] std::uint32_t referenceCount() const noexcept
    {
        return references_.load(std::memory_order_relaxed);
    }

protected:
    BaseNode() noexcept = default;
    /// A copy is a node of its own: it starts without a reference.
    BaseNode(BaseNode const& other) noexcept;
    /// The references stay with the node they were taken on.
    BaseNode& operator=(BaseNode const& other) noexcept;
    virtual ~BaseNode();

private:
    mutable std::atomic<std::uint32_t> references_ = 0;
};

} // namespace Bv_1_1
