#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

namespace Bv_1_1
{

/// An intrusive reference-counting pointer to a node (BaseNode). It may be null. It has the size of a plain
/// pointer.
///
/// The reference count is thread-safe. A SmartPtr itself may have many concurrent readers or one writer.
template <typename T>
class SmartPtr
{
public:
    constexpr SmartPtr() noexcept = default;
    /// Null.
    constexpr SmartPtr(std::nullptr_t) noexcept {} // NOLINT(google-explicit-constructor): null is a SmartPtr

    /// Adds a reference to `node`, which may be null.
    explicit SmartPtr(T* node) noexcept : node_(node)
    {
        if (node_ != nullptr) {
            node_->addReference();
        }
    }

    SmartPtr(SmartPtr const& other) noexcept : SmartPtr(other.node_) {}
    /// Leaves `other` null.
    SmartPtr(SmartPtr&& other) noexcept : node_(std::exchange(other.node_, nullptr)) {}

    /// Converts where the plain pointers convert: from a derived class, or from non-const to const.
    // NOLINTBEGIN(google-explicit-constructor)
    template <typename U, std::enable_if_t<std::is_convertible_v<U*, T*>, int> = 0>
    SmartPtr(SmartPtr<U> const& other) noexcept : SmartPtr(other.get())
    {}
    /// The same, and leaves `other` null.
    template <typename U, std::enable_if_t<std::is_convertible_v<U*, T*>, int> = 0>
    SmartPtr(SmartPtr<U>&& other) noexcept : node_(std::exchange(other.node_, nullptr))
    {}
    // NOLINTEND(google-explicit-constructor)

    /// Adds the new reference before it releases the old one, so the new node may be owned by the old one.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): handled by the swap
    SmartPtr& operator=(SmartPtr const& other) noexcept
    {
        SmartPtr(other).swap(*this);
        return *this;
    }
    /// Leaves `other` null, unless it is this pointer.
    SmartPtr& operator=(SmartPtr&& other) noexcept
    {
        SmartPtr(std::move(other)).swap(*this);
        return *this;
    }
    SmartPtr& operator=(T* node) noexcept
    {
        reset(node);
        return *this;
    }
    SmartPtr& operator=(std::nullptr_t) noexcept
    {
        reset();
        return *this;
    }

    ~SmartPtr()
    {
        if (node_ != nullptr) {
            node_->dropReference();
        }
    }

    /// Releases the current node and adds a reference to `node`, which may be null.
    void reset(T* node = nullptr) noexcept { SmartPtr(node).swap(*this); }

    /// Exchanges the two nodes.
    void swap(SmartPtr& other) noexcept { std::swap(node_, other.node_); }

    /// The plain pointer. Ownership does not change.
    [[nodiscard]] T* get() const noexcept { return node_; }
    /// @pre The pointer is not null.
    [[nodiscard]] T* operator->() const noexcept { return node_; }
    /// @pre The pointer is not null.
    [[nodiscard]] T& operator*() const noexcept { return *node_; }
    [[nodiscard]] explicit operator bool() const noexcept { return node_ != nullptr; }

    /// Whether both point to the same node.
    template <typename U>
    [[nodiscard]] friend bool operator==(SmartPtr const& a, SmartPtr<U> const& b) noexcept
    {
        return a.get() == b.get();
    }
    [[nodiscard]] friend bool operator==(SmartPtr const& a, T const* b) noexcept { return a.node_ == b; }
    [[nodiscard]] friend bool operator==(SmartPtr const& a, std::nullptr_t) noexcept
    {
        return a.node_ == nullptr;
    }

private:
    template <typename U>
    friend class SmartPtr;

    T* node_ = nullptr;
};

} // namespace Bv_1_1
