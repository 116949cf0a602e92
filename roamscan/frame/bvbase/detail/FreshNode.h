#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>

#include <memory>

namespace Bv_1_1::detail
{

/// Destroys a node that nobody else has taken a reference on.
struct DestroyFreshNode
{
    void operator()(BaseNode const* node) const noexcept
    {
        node->addReference();
        node->dropReference();
    }
};

/// Owns a node that was just made, until release() hands it on without a reference.
template <typename T>
using FreshNode = std::unique_ptr<T, DestroyFreshNode>;

} // namespace Bv_1_1::detail
