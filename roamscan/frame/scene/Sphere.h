#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/scene/Object.h>

namespace oV
{

/// A sphere.
class ROAMSCAN_EXPORT Sphere : public Object
{
public:
    /// The index of the position: the centre in metres.
    static constexpr unsigned int positionAttribute = 7;
    /// The index of the size, a `double`: the radius in metres.
    static constexpr unsigned int sizeAttribute = 9;

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// A sphere of size 0 at the origin. Call init() with the same arguments afterwards.
    Sphere(CreateType type, Sphere const* source);

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Copies the name; if `source` is a sphere, also the position and the size.
    bool copyFrom(Observer const* source) override;

    [[nodiscard]] AttributePointer attribute(unsigned int index) override;

    /// The centre in metres.
    [[nodiscard]] Bv_1_1::Vec3d<double> const& position() const noexcept { return position_.value(); }
    /// The radius in metres.
    [[nodiscard]] double size() const noexcept { return size_.value(); }

protected:
    ~Sphere() override;

private:
    ObjectAttribute<Bv_1_1::Vec3d<double>> position_;
    ObjectAttribute<double> size_;
};

} // namespace oV
