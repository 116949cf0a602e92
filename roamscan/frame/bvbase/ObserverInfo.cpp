#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/ObserverInfo.h>
#include <roamscan/frame/bvbase/oVClass.h>

namespace Bv_1_1
{

oVClass const* ObserverInfo::Class()
{
    static oVClass const record(L"ObserverInfo", BaseNode::Class(), Module::library(), ClassVersion{0});
    return &record;
}

oVClass const* ObserverInfo::getClassType() const
{
    return Class();
}

ObserverInfo::~ObserverInfo() = default;

} // namespace Bv_1_1
