#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/oVClass.h>

namespace Bv_1_1
{

oVClass::oVClass(wchar_t const* name,
                 oVClass const* parent,
                 Module const& module,
                 ClassVersion const& version)
    : name_(name), parent_(parent), module_(module), version_(version)
{
    module_.enter(this);
}

oVClass::~oVClass()
{
    module_.withdraw(this);
}

BaseNode* oVClass::create() const
{
    return nullptr;
}

void oVClass::initClassStatics() {}

void oVClass::clearClassStatics() {}

} // namespace Bv_1_1
