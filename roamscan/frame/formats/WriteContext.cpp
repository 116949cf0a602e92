#include <roamscan/frame/formats/WriteContext.h>

namespace oV
{

WriteContext::WriteContext(ModelFormat::Format format, bool writeDefaultValues) noexcept
    : format_(format), writeDefaultValues_(writeDefaultValues)
{}

ModelFormat::Format WriteContext::getFormat() const
{
    return format_;
}

bool WriteContext::writeDefaultValues() const
{
    return writeDefaultValues_;
}

} // namespace oV
