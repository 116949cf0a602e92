#include <roamscan/frame/scene/ObjNames.h>

namespace oV
{

Bv_1_1::String const& ObjNames::key(unsigned int number)
{
    static Bv_1_1::String const lineName(L"Line");
    return number == line ? lineName : Bv_1_1::String::NIL;
}

} // namespace oV
