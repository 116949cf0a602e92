#pragma once

#include <roamscan/frame/formats/WriteContextBase.h>

namespace oV
{

/// A write context with fixed settings.
class ROAMSCAN_EXPORT WriteContext : public WriteContextBase
{
public:
    /// @param writeDefaultValues whether values equal to their default are written in the keyed form
    explicit WriteContext(ModelFormat::Format format = ModelFormat::Format::Keyed,
                          bool writeDefaultValues = true) noexcept;

    [[nodiscard]] ModelFormat::Format getFormat() const override;
    [[nodiscard]] bool writeDefaultValues() const override;

private:
    ModelFormat::Format format_;
    bool writeDefaultValues_;
};

} // namespace oV
