#include <roamscan/frame/bvbase/detail/CreatingClass.h>
#include <roamscan/frame/scene/Line.h>

namespace oV
{

Bv_1_1::oVClass const* Line::Class()
{
    static Bv_1_1::detail::CreatingClass const record(
        L"Line", Object::Class(), []() -> BaseNode* { return new Line(CreateType::Fresh, nullptr); });
    return &record;
}

Line::Line(CreateType type, Line const* source) : Object(type, source) {}
Line::~Line() = default;

Bv_1_1::oVClass const* Line::getClassType() const
{
    return Class();
}

bool Line::copyFrom(Observer const* source)
{
    if (auto const* const line = dynamic_cast<Line const*>(source)) {
        key_ = line->key_;
        points_ = line->points_;
    }
    return Object::copyFrom(source);
}

void Line::setKey(Bv_1_1::String const& key)
{
    key_ = key;
}

void Line::appendPoint(Bv_1_1::Vec3d<double> const& point)
{
    points_.push_back(point);
}

} // namespace oV
