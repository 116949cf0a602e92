#include <roamscan/frame/bvbase/detail/CreatingClass.h>
#include <roamscan/frame/scene/Sphere.h>

namespace oV
{

Bv_1_1::oVClass const* Sphere::Class()
{
    static Bv_1_1::detail::CreatingClass const record(
        L"Sphere", Object::Class(), []() -> BaseNode* { return new Sphere(CreateType::Fresh, nullptr); });
    return &record;
}

Sphere::Sphere(CreateType type, Sphere const* source) : Object(type, source) {}
Sphere::~Sphere() = default;

Bv_1_1::oVClass const* Sphere::getClassType() const
{
    return Class();
}

bool Sphere::copyFrom(Observer const* source)
{
    if (auto const* const sphere = dynamic_cast<Sphere const*>(source)) {
        position_ = sphere->position_;
        size_ = sphere->size_;
    }
    return Object::copyFrom(source);
}

Object::AttributePointer Sphere::attribute(unsigned int index)
{
    switch (index) {
    case positionAttribute:
        return &position_;
    case sizeAttribute:
        return &size_;
    default:
        return Object::attribute(index);
    }
}

} // namespace oV
