#pragma once

#include <roamscan/frame/formats/ReadContextBase.h>

namespace oV
{

/// A read context with a fixed form.
class ROAMSCAN_EXPORT ReadContext : public ReadContextBase
{
public:
    /// @param format the result of getFormat()
    explicit ReadContext(ModelFormat::Format format = ModelFormat::Format::Keyed) noexcept;

    [[nodiscard]] ModelFormat::Format getFormat() const override;

private:
    ModelFormat::Format format_;
};

} // namespace oV
