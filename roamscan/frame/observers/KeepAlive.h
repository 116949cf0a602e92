#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>

namespace oV
{

/// A scope guard that holds a reference to a node, so that a callback may remove the last other reference.
/// Does nothing for a node with a reference count of 0, which its creator still owns.
class KeepAlive
{
public:
    /// @param node must outlive the scope if its reference count is 0
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
