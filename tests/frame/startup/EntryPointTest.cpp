#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/startup/EntryPoint.h>
#include <roamscan/options/RoamscanOptionsCont.h>

#include <gtest/gtest.h>

#include <new>

namespace
{

using Bv_1_1::Module;
using oV::Roamscan::entryPoint;
using oV::Roamscan::EntryReason;

/// Makes the protected tables visible.
class OpenContainer : public oV::Roamscan::RoamscanOptionsCont
{
public:
    using RoamscanOptionsCont::attrDefMap;
    using RoamscanOptionsCont::attrNames;
};

/// A class that cannot be set up or cleared.
class FailingRecord final : public Bv_1_1::oVClass
{
public:
    FailingRecord() : oVClass(L"Failing", nullptr, Module::library(), Bv_1_1::ClassVersion{0}) {}
    void initClassStatics() override { throw std::bad_alloc(); }
    void clearClassStatics() override { throw std::bad_alloc(); }
};

int call(void* image, EntryReason reason)
{
    return entryPoint(static_cast<oV::Roamscan::ImageHandle>(image), reason, nullptr);
}

/// The module was attached when the program was loaded. The tests begin with a detached one.
class EntryPoint : public testing::Test
{
protected:
    void SetUp() override { Module::library().internalTerm(); }

    int image = 0;
    int otherImage = 0;
};

} // namespace

TEST_F(EntryPoint, ProcessAttachAttachesTheModuleAndSetsUpTheClasses)
{
    EXPECT_EQ(OpenContainer::attrNames, nullptr);
    EXPECT_EQ(OpenContainer::attrDefMap, nullptr);
    EXPECT_EQ(call(&image, EntryReason::ProcessAttach), 1);
    EXPECT_TRUE(Module::library().isAttached());
    EXPECT_NE(OpenContainer::attrNames, nullptr);
    EXPECT_NE(OpenContainer::attrDefMap, nullptr);
}

TEST_F(EntryPoint, ProcessDetachDetachesTheModuleAndClearsTheClasses)
{
    ASSERT_EQ(call(&image, EntryReason::ProcessAttach), 1);
    EXPECT_EQ(call(&image, EntryReason::ProcessDetach), 1);
    EXPECT_FALSE(Module::library().isAttached());
    EXPECT_EQ(OpenContainer::attrNames, nullptr);
    EXPECT_EQ(OpenContainer::attrDefMap, nullptr);
}

TEST_F(EntryPoint, DetachingADetachedModuleSucceeds)
{
    EXPECT_EQ(call(&image, EntryReason::ProcessDetach), 1);
    EXPECT_FALSE(Module::library().isAttached());
}

TEST_F(EntryPoint, ProcessAttachFailsForANullHandle)
{
    EXPECT_EQ(call(nullptr, EntryReason::ProcessAttach), 0);
    EXPECT_FALSE(Module::library().isAttached());
}

TEST_F(EntryPoint, ProcessAttachFailsIfTheModuleBelongsToAnotherImage)
{
    ASSERT_EQ(call(&image, EntryReason::ProcessAttach), 1);
    EXPECT_EQ(call(&otherImage, EntryReason::ProcessAttach), 0);
    EXPECT_EQ(call(&image, EntryReason::ProcessAttach), 1);
}

TEST_F(EntryPoint, ProcessAttachFailsIfAClassCannotBeSetUp)
{
    FailingRecord const record;
    EXPECT_EQ(call(&image, EntryReason::ProcessAttach), 0);
    EXPECT_FALSE(Module::library().isAttached());
}

TEST_F(EntryPoint, ProcessDetachSucceedsEvenIfAClassCannotBeCleared)
{
    ASSERT_EQ(call(&image, EntryReason::ProcessAttach), 1);
    FailingRecord const record;
    EXPECT_EQ(call(&image, EntryReason::ProcessDetach), 1);
}

// The notifications of threads on Windows have the reasons 2 and 3.
TEST_F(EntryPoint, AnyOtherReasonDoesNothing)
{
    for (unsigned int const reason : {2U, 3U, 4U, 0xFFFFFFFFU}) {
        EXPECT_EQ(call(&image, static_cast<EntryReason>(reason)), 1);
        EXPECT_FALSE(Module::library().isAttached());
    }
    ASSERT_EQ(call(&image, EntryReason::ProcessAttach), 1);
    for (unsigned int const reason : {2U, 3U, 4U, 0xFFFFFFFFU}) {
        EXPECT_EQ(call(nullptr, static_cast<EntryReason>(reason)), 1);
        EXPECT_TRUE(Module::library().isAttached());
    }
}
