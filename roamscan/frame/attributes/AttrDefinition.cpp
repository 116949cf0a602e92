#include <roamscan/frame/attributes/AttrDefinition.h>
#include <roamscan/frame/attributes/detail/AttrKinds.h>
#include <roamscan/frame/bvbase/detail/FreshNode.h>

namespace oV
{

Attribute* AttrDefinition::createAttr(Bv_1_1::BaseNode::CreateType createType,
                                      Attribute const* source,
                                      void* place) const
{
    detail::AttrKind const* const kind = detail::attrKind(type);
    if (kind == nullptr) {
        return nullptr;
    }
    auto const make = (flags & customFlag) != 0 ? kind->makeCustom : kind->makePlain;
    Bv_1_1::detail::FreshNode<Attribute> made(make(createType, source, place));
    if (source != nullptr && createType != Bv_1_1::BaseNode::CreateType::NoSource) {
        made->assignAttr(*source);
    }
    return made.release();
}

} // namespace oV
