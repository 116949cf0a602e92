#include <roamscan/frame/failures/ExceptionStringExtractor.h>

namespace oV
{

ExceptionStringExtractor::~ExceptionStringExtractor() = default;

} // namespace oV
