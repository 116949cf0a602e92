#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/scene/Object.h>

#include <span>
#include <vector>

namespace oV
{

/// A polyline.
class ROAMSCAN_EXPORT Line : public Object
{
public:
    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// A line without points and key. Call init() with the same arguments afterwards.
    Line(CreateType type, Line const* source);

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Copies the name; if `source` is a line, also the key and the points.
    bool copyFrom(Observer const* source) override;

    /// Sets the type of object as which the line is shown; one of ObjNames.
    virtual void setKey(Bv_1_1::String const& key);

    /// Appends a point in metres.
    virtual void appendPoint(Bv_1_1::Vec3d<double> const& point);

    /// The type of object; NIL until it is set.
    [[nodiscard]] Bv_1_1::String const& key() const noexcept { return key_; }

    /// The points in order. Valid until the next appendPoint().
    [[nodiscard]] std::span<Bv_1_1::Vec3d<double> const> points() const noexcept { return points_; }

protected:
    ~Line() override;

private:
    Bv_1_1::String key_;
    std::vector<Bv_1_1::Vec3d<double>> points_;
};

} // namespace oV
