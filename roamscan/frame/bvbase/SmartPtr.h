#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

namespace Bv_1_1
{

/// A pointer to a counted node (BaseNode) that holds one reference; it may be null. As large as a plain
/// pointer.
///
/// The count is safe on all threads; one SmartPtr is for many readers or one writer.
template <typename T>
class SmartPtr
{
public:
    constexpr SmartPtr() noexcept = default;
    /// Null.
    constexpr SmartPtr(std::nullptr_t) noexcept {} // NOLINT(google-explicit-constructor): null is a SmartPtr

    /// Takes a reference of its own; the pointer may be null.
    explicit SmartPtr(T* node) noexcept : node_(node)
    {
        if (node_ != nullptr) {
            node_->addReference();
        }
    }

    SmartPtr(SmartPtr const& other) noexcept : SmartPtr(other.node_) {}
    /// Leaves `other` null.
    SmartPtr(SmartPtr&& other) noexcept : node_(std::exchange(other.node_, nullptr)) {}

    /// From a pointer to a derived class, or to the same class without const; as plain pointers convert.
    // NOLINTBEGIN(google-explicit-constructor)
    template <typename U, std::enable_if_t<std::is_convertible_v<U*, T*>, int> = 0>
    SmartPtr(SmartPtr<U> const& other) noexcept : SmartPtr(other.get())
    {}
    template <typename U, std::enable_if_t<std::is_convertible_v<U*, T*>, int> = 0>
    /// @overload
    SmartPtr(SmartPtr<U>&& other) noexcept : node_(std::exchange(other.node_, nullptr))
    {}
    // NOLINTEND(google-explicit-constructor)

    /// The new reference is taken before the old one is dropped, so a node may be replaced by one that it
    /// alone holds.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the swap sees to it
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

    /// Drops the node it has and takes a reference on another one, or on none.
    void reset(T* node = nullptr) noexcept { SmartPtr(node).swap(*this); }

    /// Exchanges the two nodes.
    void swap(SmartPtr& other) noexcept { std::swap(node_, other.node_); }

    /// The node, which stays owned as it is.
    [[nodiscard]] T* get() const noexcept { return node_; }
    /// Not for a null pointer.
    [[nodiscard]] T* operator->() const noexcept { return node_; }
    /// Not for a null pointer.
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
