#include <roamscan/frame/bvbase/detail/CreatingClass.h>
#include <roamscan/frame/observers/InfoFailed.h>

namespace oV
{

Bv_1_1::oVClass const* InfoFailed::Class()
{
    static Bv_1_1::detail::CreatingClass const record(
        L"InfoFailed", ObserverInfo::Class(), []() -> BaseNode* { return new InfoFailed(); });
    return &record;
}

Bv_1_1::oVClass const* InfoFailed::getClassType() const
{
    return Class();
}

InfoFailed::InfoFailed() noexcept = default;
InfoFailed::~InfoFailed() = default;

} // namespace oV
