#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/scene/Object.h>

namespace oV
{

/// A group of scene objects. It has children but nothing to draw itself.
/// @note Despite its name it has no transform.
class ROAMSCAN_EXPORT Transform : public Object
{
public:
    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// A group without children. Call init() with the same arguments afterwards.
    Transform(CreateType type, Transform const* source);

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

protected:
    ~Transform() override;
};

} // namespace oV
