#pragma once

#include <utility>

namespace oV
{

class Observer;

/// A value of a scene object. It is part of the object, and cannot be observed by itself: a scene of a
/// million objects stays small.
template <typename T>
class ObjectAttribute
{
public:
    explicit ObjectAttribute(T value = T()) : value_(std::move(value)) {}
    ObjectAttribute(ObjectAttribute const&) = default;
    ObjectAttribute& operator=(ObjectAttribute const&) = default;
    virtual ~ObjectAttribute() = default;

    /// Copies the value that `newValue` points to. The other arguments are not used; pass null.
    /// @return false for a null `newValue`, which changes nothing
    virtual bool assignFrom(T const* newValue, Observer* /*observer*/, void* /*parameter*/)
    {
        if (newValue == nullptr) {
            return false;
        }
        value_ = *newValue;
        return true;
    }

    [[nodiscard]] T const& value() const noexcept { return value_; }

private:
    T value_;
};

} // namespace oV
