#include <roamscan/frame/bvbase/detail/CreatingClass.h>
#include <roamscan/frame/scene/Transform.h>

namespace oV
{

Bv_1_1::oVClass const* Transform::Class()
{
    static Bv_1_1::detail::CreatingClass const record(L"Transform", Object::Class(), []() -> BaseNode* {
        return new Transform(CreateType::Fresh, nullptr);
    });
    return &record;
}

Transform::Transform(CreateType type, Transform const* source) : Object(type, source) {}
Transform::~Transform() = default;

Bv_1_1::oVClass const* Transform::getClassType() const
{
    return Class();
}

} // namespace oV
