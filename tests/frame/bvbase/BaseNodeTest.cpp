#include "tests/support/VirtualSlot.h"

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/VisitorCore.h>
#include <roamscan/frame/bvbase/oVClass.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

namespace
{

using Bv_1_1::BaseNode;
using Bv_1_1::SmartPtr;

class Node : public BaseNode
{
public:
    virtual void firstOfItsOwn() {}
};

// Records its reference count during destruction.
class Witness : public BaseNode
{
public:
    explicit Witness(std::uint32_t& seen, int& destroyed) : seen_(seen), destroyed_(destroyed) {}

protected:
    ~Witness() override
    {
        seen_ = referenceCount();
        ++destroyed_;
        SmartPtr<Witness> const lateReference(this);
    }

private:
    std::uint32_t& seen_;
    int& destroyed_;
};

TEST(BaseNode, StartsWithTheVirtualTableAndTheReferenceCount)
{
    SmartPtr<Node> const node(new Node);
    SmartPtr<Node> const second(node);
    auto const* const object = reinterpret_cast<char const*>(node.get());
    EXPECT_EQ(static_cast<void const*>(static_cast<BaseNode const*>(node.get())), object);
    std::uint32_t count = 0;
    std::memcpy(&count, object + sizeof(void*), sizeof count);
    EXPECT_EQ(count, 2U);
}

TEST(BaseNode, HasExactlyTwoVirtualFunctionsInOrder)
{
    if (!support::virtualSlotsAreKnown) {
        GTEST_SKIP() << "The places of virtual operations are not known here";
    }
    EXPECT_EQ(support::virtualSlot(&BaseNode::getClassType), 0U);
    EXPECT_EQ(support::virtualSlot(&Node::firstOfItsOwn), 3U); // after the destructor's two entries
}

TEST(BaseNode, DerivesFromTheVisitorCore)
{
    EXPECT_TRUE((std::is_base_of_v<Bv_1_1::VisitorCore, BaseNode>));
    EXPECT_TRUE(std::is_empty_v<Bv_1_1::VisitorCore>);
}

TEST(BaseNode, ANewNodeHasNoReference)
{
    auto* const node = new Node;
    EXPECT_EQ(node->referenceCount(), 0U);
    SmartPtr<Node> const owner(node);
    EXPECT_EQ(node->referenceCount(), 1U);
}

TEST(BaseNode, ACopyStartsWithoutReferences)
{
    SmartPtr<Node> const node(new Node);
    SmartPtr<Node> const copy(new Node(*node));
    EXPECT_EQ(copy->referenceCount(), 1U);
    EXPECT_EQ(node->referenceCount(), 1U);
}

TEST(BaseNode, AssignmentKeepsBothReferenceCounts)
{
    SmartPtr<Node> const first(new Node);
    SmartPtr<Node> const second(new Node);
    SmartPtr<Node> const third(second);
    *first = *second;
    EXPECT_EQ(first->referenceCount(), 1U);
    EXPECT_EQ(second->referenceCount(), 2U);
}

TEST(BaseNode, TheCountIsTheMarkDuringDestruction)
{
    std::uint32_t seen = 0;
    int destroyed = 0;
    {
        SmartPtr<Witness> first(new Witness(seen, destroyed));
        SmartPtr<Witness> const second(first);
        first.reset();
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(seen, 0xF000DEADU);
}

TEST(BaseNode, AReferenceAddedDuringDestructionDestroysNothingTwice)
{
    std::uint32_t seen = 0;
    int destroyed = 0;
    SmartPtr<Witness>(new Witness(seen, destroyed)).reset();
    EXPECT_EQ(destroyed, 1);
}

TEST(BaseNode, HasTheRecordOfTheRootClass)
{
    SmartPtr<Node> const node(new Node);
    EXPECT_EQ(node->getClassType(), BaseNode::Class());
    EXPECT_EQ(std::wstring(BaseNode::Class()->name()), L"BaseNode");
    EXPECT_EQ(BaseNode::Class()->parent(), nullptr);
    EXPECT_EQ(BaseNode::Class()->version().number, 0U);
    EXPECT_EQ(BaseNode::Class()->create(), nullptr);
}

TEST(BaseNode, CreateTypesHaveTheirValues)
{
    EXPECT_EQ(static_cast<int>(BaseNode::CreateType::Fresh), 0);
    EXPECT_EQ(static_cast<int>(BaseNode::CreateType::NoSource), 3);
}

} // namespace
