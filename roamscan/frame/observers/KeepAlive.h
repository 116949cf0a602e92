#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>

namespace oV
{

/// Keeps a node that somebody owns alive for a scope, so that a callback may drop the last reference to it. A
/// node without a reference is left as it is: it belongs to whoever has just made it.
class KeepAlive
{
public:
    /// @param node must outlive the scope if it has no reference
    explicit KeepAlive(Bv_1_1::BaseNode const& node) noexcept
        : node_(node.referenceCount() == 0 ? nullptr : &node)
    {
        if (node_ != nullptr) {
            node_->addReference();
        }
    }
    KeepAlive(KeepAlive const&) = delete;
    KeepAlive& operator=(KeepAlive const&) = delete;
    ~KeepAlive()
    {
        if (node_ != nullptr) {
            node_->dropReference();
        }
    }

private:
    Bv_1_1::BaseNode const* node_;
};

} // namespace oV
