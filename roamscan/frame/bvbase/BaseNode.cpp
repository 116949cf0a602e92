#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/ClassVersion.h>
#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/oVClass.h>

namespace Bv_1_1
{

oVClass const* BaseNode::Class()
{
    static oVClass record(L"BaseNode", nullptr, Module::library(), ClassVersion{0});
    return &record;
}

oVClass const* BaseNode::getClassType() const
{
    return Class();
}

BaseNode::BaseNode(BaseNode const& other) noexcept : VisitorCore(other) {}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is assigned
BaseNode& BaseNode::operator=(BaseNode const&) noexcept
{
    return *this;
}

BaseNode::~BaseNode() = default;

} // namespace Bv_1_1
