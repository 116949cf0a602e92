#pragma once

#include <utility>

namespace oV
{

class Observer;

/// A value of a scene object. It is part of the object and, to save memory, cannot be observed by itself.
template <typename T>
class ObjectAttribute
{
public:
    /// An attribute with this value.
    explicit ObjectAttribute(T value = T()) : value_(std::move(value)) {}
    ObjectAttribute(ObjectAttribute const&) = default;
    ObjectAttribute& operator=(ObjectAttribute const&) = default;
    virtual ~ObjectAttribute() = default;

    /// Assigns a copy of `*newValue`. The other arguments are not used; pass null.
    /// @return false if `newValue` is null; nothing changes then
    virtual bool assignFrom(T const* newValue, Observer* /*observer*/, void* /*parameter*/)
    {
        if (newValue == nullptr) {
            return false;
        }
        value_ = *newValue;
        return true;
    }

    /// The value.
    [[nodiscard]] T const& value() const noexcept { return value_; }

private:
    T value_;
};

} // namespace oV
