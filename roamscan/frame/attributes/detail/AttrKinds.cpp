#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/attributes/detail/AttrKinds.h>
#include <roamscan/frame/attributes/detail/ValueNames.h>

#include <algorithm>
#include <array>

namespace oV::detail
{

namespace
{

template <typename Made>
Attribute* makeAttribute(Bv_1_1::BaseNode::CreateType type, Attribute const* source, void* place)
{
    return place == nullptr ? new Made(type, source) : new (place) Made(type, source);
}

template <typename T>
constexpr AttrKind kindOf()
{
    constexpr std::size_t alignment = alignof(std::max_align_t);
    constexpr std::size_t size = std::max(sizeof(Attr<T>), sizeof(CustAttr<T>));
    return {ValueNames<T>::type,
            ValueNames<T>::attribute,
            (size + alignment - 1) / alignment * alignment,
            &makeAttribute<Attr<T>>,
            &makeAttribute<CustAttr<T>>};
}

constexpr std::array kinds = {
    kindOf<bool>(), kindOf<int>(), kindOf<double>(), kindOf<Bv_1_1::String>(), kindOf<StringList>()};

template <typename Test>
AttrKind const* firstWith(Test const& test)
{
    auto const* const found = std::find_if(kinds.begin(), kinds.end(), test);
    return found == kinds.end() ? nullptr : found;
}

} // namespace

AttrKind const* attrKind(AttrType type) noexcept
{
    return firstWith([type](AttrKind const& kind) { return kind.type == type; });
}

AttrKind const* attrKind(Bv_1_1::String const& key)
{
    return firstWith([&key](AttrKind const& kind) { return key.compare(kind.key) == 0; });
}

} // namespace oV::detail
