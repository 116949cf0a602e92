#include <roamscan/frame/formats/ReadFromScope.h>

namespace oV
{

ReadFromScope::ReadFromScope(std::istream* stream, ReadContextBase* context) : FormatScope(stream, context)
{
    if (isNested()) {
        outerState_ = getImf().openScope();
    }
}

ReadFromScope::~ReadFromScope()
{
    if (isNested()) {
        getImf().closeScope(outerState_);
    }
}

} // namespace oV
