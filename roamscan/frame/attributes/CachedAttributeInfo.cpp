#include <roamscan/frame/attributes/CachedAttributeInfo.h>
#include <roamscan/frame/bvbase/detail/CreatingClass.h>

namespace oV
{

Bv_1_1::oVClass const* CachedAttributeInfo::Class()
{
    static Bv_1_1::detail::CreatingClass const record(
        L"CachedAttributeInfo", ObserverInfo::Class(), []() -> BaseNode* {
            return new CachedAttributeInfo(nullptr);
        });
    return &record;
}

Bv_1_1::oVClass const* CachedAttributeInfo::getClassType() const
{
    return Class();
}

CachedAttributeInfo::CachedAttributeInfo(Attribute* cachedAttribute) noexcept
    : cachedAttribute_(cachedAttribute)
{}

CachedAttributeInfo::~CachedAttributeInfo() = default;

} // namespace oV
