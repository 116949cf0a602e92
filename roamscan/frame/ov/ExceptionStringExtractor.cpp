#include <roamscan/frame/ov/ExceptionStringExtractor.h>

namespace oV
{

ExceptionStringExtractor::~ExceptionStringExtractor() = default;

} // namespace oV
