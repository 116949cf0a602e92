#include <roamscan/frame/scene/Object.h>
#include <roamscan/frame/scene/Sphere.h>
#include <roamscan/frame/scene/Transform.h>

#include <gtest/gtest.h>

#include <vector>

namespace
{

using Bv_1_1::SmartPtr;
using oV::Object;
using oV::Observer;
using oV::Transform;
using CreateType = Bv_1_1::BaseNode::CreateType;

/// Counts the live ones, and notes in which order they go away.
class Counted : public Transform
{
public:
    explicit Counted(int number = 0) : Transform(CreateType::Fresh, nullptr), number_(number) { ++alive; }

    static inline int alive = 0;
    static inline std::vector<int> released;

protected:
    ~Counted() override
    {
        --alive;
        released.push_back(number_);
    }

private:
    int number_;
};

class ObjectReleaseTest : public testing::Test
{
protected:
    void SetUp() override { Counted::released.clear(); }
    void TearDown() override { EXPECT_EQ(Counted::alive, 0); }
};

/// Removes a reference when its subject is destroyed.
class DropsAnother : public Observer
{
public:
    explicit DropsAnother(SmartPtr<Object> other) : other_(std::move(other)) {}
    void informDelete(Observer* /*subject*/) noexcept override { other_ = nullptr; }

private:
    SmartPtr<Object> other_;
};

} // namespace

TEST_F(ObjectReleaseTest, ADeepChainIsDestroyedWithoutRecursion)
{
    SmartPtr<Object> top(new Counted);
    Object* bottom = top.get();
    for (int i = 1; i < 1'000'000; ++i) {
        auto* const next = new Counted;
        ASSERT_TRUE(bottom->addChild(next, 48));
        bottom = next;
    }
    EXPECT_EQ(Counted::alive, 1'000'000);
    top = nullptr;
    EXPECT_EQ(Counted::alive, 0);
}

TEST_F(ObjectReleaseTest, AChainBuiltFromTheBottomIsDestroyedWithoutRecursion)
{
    SmartPtr<Object> top(new Counted);
    for (int i = 1; i < 100'000; ++i) {
        SmartPtr<Object> const above(new Counted);
        ASSERT_TRUE(above->addChild(top.get(), 48));
        top = above;
    }
    top = nullptr;
    EXPECT_EQ(Counted::alive, 0);
}

TEST_F(ObjectReleaseTest, AWideSceneIsDestroyedInOrder)
{
    SmartPtr<Object> top(new Counted(1));
    top->addChild(new Counted(2), 48);
    top->addChild(new Counted(3), 48);
    top->children()[0].object->addChild(new Counted(4), 48);
    top = nullptr;
    EXPECT_EQ(Counted::released, (std::vector{1, 2, 3, 4}));
}

TEST_F(ObjectReleaseTest, EveryChildOfEveryChildLosesItsParent)
{
    SmartPtr<Object> top(new Counted(1));
    std::vector<SmartPtr<Object>> kept;
    for (int i = 0; i < 3; ++i) {
        auto* const child = new Counted(2);
        top->addChild(child, 48);
        kept.emplace_back(new Counted(3));
        child->addChild(kept.back().get(), 48);
    }
    top = nullptr;
    EXPECT_EQ(Counted::released, (std::vector{1, 2, 2, 2}));
    for (auto const& object : kept) {
        EXPECT_EQ(object->parent(), nullptr);
        EXPECT_EQ(object->referenceCount(), 1U);
    }
}

TEST_F(ObjectReleaseTest, WhatIsHeldElsewhereStaysWithItsChildren)
{
    SmartPtr<Object> top(new Counted(1));
    SmartPtr<Object> kept(new Counted(2));
    top->addChild(kept.get(), 48);
    kept->addChild(new Counted(3), 48);
    top = nullptr;
    EXPECT_EQ(Counted::released, (std::vector{1}));
    EXPECT_EQ(kept->children().size(), 1U);
    kept = nullptr;
    EXPECT_EQ(Counted::released, (std::vector{1, 2, 3}));
}

TEST_F(ObjectReleaseTest, AnObserverMayReleaseAnotherSceneDuringARelease)
{
    SmartPtr<Object> other(new Counted(10));
    other->addChild(new Counted(11), 48);
    SmartPtr<Object> top(new Counted(1));
    top->addChild(new Counted(2), 48);
    top->addChild(new Counted(3), 48);
    SmartPtr<DropsAnother> const observer(new DropsAnother(std::move(other)));
    top->children()[0].object->addObserver(observer.get());
    top = nullptr;
    EXPECT_EQ(Counted::alive, 0);
}

TEST_F(ObjectReleaseTest, AnObjectHasNoMoreThanItNeeds)
{
    // A scene has one for each of a million nodes.
    EXPECT_LE(sizeof(oV::Sphere), 104U);
}
