#include <roamscan/frame/formats/ReadContext.h>

namespace oV
{

ReadContext::ReadContext(ModelFormat::Format format) noexcept : format_(format) {}

ModelFormat::Format ReadContext::getFormat() const
{
    return format_;
}

} // namespace oV
