#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/SmartPtr.h>

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{

using Bv_1_1::BaseNode;
using Bv_1_1::SmartPtr;

class SharedNode : public BaseNode
{
public:
    explicit SharedNode(int& alive) : alive_(alive) { ++alive_; }

    int number = 7;
    SmartPtr<SharedNode> next;

protected:
    ~SharedNode() override { --alive_; }

private:
    int& alive_;
};

class SmartPtrTest : public testing::Test
{
protected:
    ~SmartPtrTest() override { EXPECT_EQ(alive, 0) << "nodes were left over"; }

    int alive = 0;
};

TEST_F(SmartPtrTest, IsOnePointer)
{
    EXPECT_EQ(sizeof(SmartPtr<SharedNode>), sizeof(void*));
}

TEST_F(SmartPtrTest, MayBeNull)
{
    SmartPtr<SharedNode> const first;
    SmartPtr<SharedNode> const second = nullptr;
    SharedNode* const none = nullptr;
    SmartPtr<SharedNode> const third(none);
    SmartPtr<SharedNode> const copy(third);
    EXPECT_EQ(first.get(), nullptr);
    EXPECT_FALSE(second);
    EXPECT_TRUE(third == nullptr);
    EXPECT_FALSE(copy);
}

TEST_F(SmartPtrTest, AddsAReferenceToAPlainPointer)
{
    SmartPtr<SharedNode> const first(new SharedNode(alive));
    EXPECT_EQ(first->referenceCount(), 1U);
    SmartPtr<SharedNode> const second(first.get());
    EXPECT_EQ(first->referenceCount(), 2U);
}

TEST_F(SmartPtrTest, DestroysTheNodeWithTheLastReference)
{
    SmartPtr<SharedNode> first(new SharedNode(alive));
    SmartPtr<SharedNode> second(first);
    first = nullptr;
    EXPECT_EQ(alive, 1);
    second = nullptr;
    EXPECT_EQ(alive, 0);
}

TEST_F(SmartPtrTest, DestroysThroughTheVirtualDestructor)
{
    SmartPtr<BaseNode> node(new SharedNode(alive));
    EXPECT_EQ(alive, 1);
    node.reset();
    EXPECT_EQ(alive, 0);
}

TEST_F(SmartPtrTest, CopyingAddsAReference)
{
    SmartPtr<SharedNode> const first(new SharedNode(alive));
    {
        SmartPtr<SharedNode> const second(first);
        SmartPtr<SharedNode> third;
        third = first;
        EXPECT_EQ(first->referenceCount(), 3U);
        EXPECT_EQ(third.get(), first.get());
    }
    EXPECT_EQ(first->referenceCount(), 1U);
}

TEST_F(SmartPtrTest, MovingLeavesTheCountAndANullPointer)
{
    SmartPtr<SharedNode> first(new SharedNode(alive));
    SmartPtr<SharedNode> second(std::move(first));
    EXPECT_FALSE(first); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(second->referenceCount(), 1U);
    SmartPtr<SharedNode> third(new SharedNode(alive));
    third = std::move(second);
    EXPECT_FALSE(second); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(third->referenceCount(), 1U);
    EXPECT_EQ(alive, 1);
}

TEST_F(SmartPtrTest, ConvertsToTheBaseAndToConst)
{
    SmartPtr<SharedNode> node(new SharedNode(alive));
    SmartPtr<BaseNode> const base = node;
    SmartPtr<SharedNode const> const constant = node;
    EXPECT_EQ(node->referenceCount(), 3U);
    EXPECT_TRUE(base == node);
    EXPECT_TRUE(constant == node);
    SmartPtr<BaseNode const> const moved = std::move(node);
    EXPECT_FALSE(node); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(moved->referenceCount(), 3U);
    EXPECT_FALSE((std::is_convertible_v<SmartPtr<BaseNode>, SmartPtr<SharedNode>>));
    EXPECT_FALSE((std::is_convertible_v<SmartPtr<SharedNode const>, SmartPtr<SharedNode>>));
}

TEST_F(SmartPtrTest, PlainPointersDoNotConvertImplicitly)
{
    EXPECT_FALSE((std::is_convertible_v<SharedNode*, SmartPtr<SharedNode>>));
}

TEST_F(SmartPtrTest, AssigningAPlainPointerAddsItsReferenceAndReleasesTheOld)
{
    SmartPtr<SharedNode> first(new SharedNode(alive));
    auto* const node = new SharedNode(alive);
    first = node;
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(node->referenceCount(), 1U);
    first.reset(node);
    EXPECT_EQ(node->referenceCount(), 1U);
    EXPECT_EQ(alive, 1);
}

TEST_F(SmartPtrTest, AssigningAPointerToItselfKeepsTheNode)
{
    SmartPtr<SharedNode> node(new SharedNode(alive));
    SmartPtr<SharedNode>& same = node;
    node = same;
    EXPECT_EQ(node->referenceCount(), 1U);
    node = std::move(same);
    ASSERT_TRUE(node);
    EXPECT_EQ(node->referenceCount(), 1U);
}

TEST_F(SmartPtrTest, ANodeMayBeReplacedByOneThatOnlyItKeepsAlive)
{
    SmartPtr<SharedNode> head(new SharedNode(alive));
    head->next = SmartPtr<SharedNode>(new SharedNode(alive));
    SharedNode* const second = head->next.get();
    head = head->next;
    EXPECT_EQ(head.get(), second);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(second->referenceCount(), 1U);
}

TEST_F(SmartPtrTest, DereferencesToTheNode)
{
    SmartPtr<SharedNode> const node(new SharedNode(alive));
    node->number = 8;
    EXPECT_EQ((*node).number, 8);
    EXPECT_TRUE(node);
    EXPECT_EQ(node.get(), &*node);
}

TEST_F(SmartPtrTest, ComparesByNode)
{
    SmartPtr<SharedNode> const first(new SharedNode(alive));
    SmartPtr<SharedNode> const second(new SharedNode(alive));
    EXPECT_TRUE(first == SmartPtr<SharedNode>(first));
    EXPECT_TRUE(first != second);
    EXPECT_TRUE(first == first.get());
    EXPECT_TRUE(second != first.get());
    EXPECT_TRUE(first != nullptr);
}

TEST_F(SmartPtrTest, SwapKeepsTheReferenceCounts)
{
    SmartPtr<SharedNode> first(new SharedNode(alive));
    SmartPtr<SharedNode> second;
    SharedNode* const node = first.get();
    first.swap(second);
    EXPECT_EQ(second.get(), node);
    EXPECT_FALSE(first);
    EXPECT_EQ(node->referenceCount(), 1U);
}

TEST_F(SmartPtrTest, ManyThreadsMayAddAndReleaseReferences)
{
    SmartPtr<SharedNode> shared(new SharedNode(alive));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([own = shared]() mutable {
            for (int round = 0; round < 10000; ++round) {
                SmartPtr<SharedNode const> const copy(own);
            }
            own = nullptr;
        });
    }
    shared = nullptr; // whichever thread ends last destroys the node
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(alive, 0);
}

} // namespace
