#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>

#include <memory>

namespace Bv_1_1::detail
{

/// Destroys a node, unless it has further references.
struct DestroyFreshNode
{
    void operator()(BaseNode const* node) const noexcept
    {
        node->addReference();
        node->dropReference();
    }
};

/// Owns a new node, until release() returns it with a reference count of 0.
template <typename T>
using FreshNode = std::unique_ptr<T, DestroyFreshNode>;

} // namespace Bv_1_1::detail
