#include "tests/support/VirtualSlot.h"

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/oVClass.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{

using Bv_1_1::BaseNode;
using Bv_1_1::ClassVersion;
using Bv_1_1::Module;
using Bv_1_1::oVClass;

using Calls = std::vector<std::string>;

class RecordedNode : public BaseNode
{};

// Records the calls of its virtual functions.
class Record : public oVClass
{
public:
    Record(wchar_t const* name, Module const& module, Calls& calls, std::string label)
        : oVClass(name, nullptr, module, ClassVersion{0}), calls_(calls), label_(std::move(label))
    {}

    [[nodiscard]] BaseNode* create() const override { return new RecordedNode; }
    void initClassStatics() override { calls_.push_back("init " + label_); }
    void clearClassStatics() override { calls_.push_back("clear " + label_); }

private:
    Calls& calls_;
    std::string label_;
};

class FailingRecord : public oVClass
{
public:
    using oVClass::oVClass;
    void initClassStatics() override { throw std::runtime_error("no set-up"); }
};

int imageStorage[2];
oV::Roamscan::ImageHandle const image = reinterpret_cast<oV::Roamscan::ImageHandle>(&imageStorage[0]);
oV::Roamscan::ImageHandle const otherImage = reinterpret_cast<oV::Roamscan::ImageHandle>(&imageStorage[1]);

// oVClass

TEST(ClassRecord, KeepsItsConstructorArguments)
{
    Module const module;
    oVClass const parent(L"Parent", nullptr, module, ClassVersion{0});
    oVClass const record(L"Child", &parent, module, ClassVersion{3});
    EXPECT_EQ(std::wstring(record.name()), L"Child");
    EXPECT_EQ(record.parent(), &parent);
    EXPECT_EQ(&record.module(), &module);
    EXPECT_EQ(record.version().number, 3U);
}

TEST(ClassRecord, TheNameFollowsTheVirtualTable)
{
    Module const module;
    wchar_t const* const name = L"Class";
    oVClass const record(name, nullptr, module, ClassVersion{0});
    wchar_t const* second = nullptr;
    std::memcpy(&second, reinterpret_cast<char const*>(&record) + sizeof(void*), sizeof second);
    EXPECT_EQ(second, name);
}

TEST(ClassRecord, HasItsVirtualFunctionsInOrder)
{
    if (!support::virtualSlotsAreKnown) {
        GTEST_SKIP() << "The places of virtual operations are not known here";
    }
    EXPECT_EQ(support::virtualSlot(&oVClass::create), 2U); // after the destructor's two entries
    EXPECT_EQ(support::virtualSlot(&oVClass::initClassStatics), 3U);
    EXPECT_EQ(support::virtualSlot(&oVClass::clearClassStatics), 4U);
}

TEST(ClassRecord, AClassDerivesFromItselfAndItsAncestors)
{
    Module const module;
    oVClass const root(L"Root", nullptr, module, ClassVersion{0});
    oVClass const child(L"Child", &root, module, ClassVersion{0});
    oVClass const grandchild(L"Grandchild", &child, module, ClassVersion{0});
    oVClass const sibling(L"Child", &root, module, ClassVersion{0});
    EXPECT_TRUE(root.isDerivedFrom(&root));
    EXPECT_TRUE(child.isDerivedFrom(&root));
    EXPECT_TRUE(grandchild.isDerivedFrom(&root));
    EXPECT_TRUE(grandchild.isDerivedFrom(&child));
    EXPECT_FALSE(root.isDerivedFrom(&child));
    EXPECT_FALSE(child.isDerivedFrom(&sibling)); // another class with the same name
    EXPECT_FALSE(grandchild.isDerivedFrom(nullptr));
}

TEST(ClassRecord, ABaseRecordCreatesNothingAndSetsUpNothing)
{
    Module const module;
    oVClass record(L"Class", nullptr, module, ClassVersion{0});
    EXPECT_EQ(record.create(), nullptr);
    record.initClassStatics();
    record.clearClassStatics();
}

TEST(ClassRecord, CreatesAnInstanceWithoutAReference)
{
    Module const module;
    Calls calls;
    Record const record(L"RecordedNode", module, calls, "node");
    BaseNode* const made = record.create();
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->referenceCount(), 0U);
    Bv_1_1::SmartPtr<BaseNode> const owner(made);
}

// Module

TEST(Module, KeepsTheRecordsInOrderOfRegistration)
{
    Module const module;
    EXPECT_TRUE(module.classes().empty());
    oVClass const first(L"First", nullptr, module, ClassVersion{0});
    auto second = std::make_unique<oVClass>(L"Second", nullptr, module, ClassVersion{0});
    oVClass const third(L"Third", nullptr, module, ClassVersion{0});
    EXPECT_EQ(module.classes(), (std::vector<oVClass const*>{&first, second.get(), &third}));
    second.reset();
    EXPECT_EQ(module.classes(), (std::vector<oVClass const*>{&first, &third}));
}

TEST(Module, TheLibrarysModuleContainsTheRootClass)
{
    EXPECT_EQ(&Module::library(), &Module::library());
    EXPECT_EQ(&BaseNode::Class()->module(), &Module::library());
    auto const classes = Module::library().classes();
    EXPECT_NE(std::find(classes.begin(), classes.end(), BaseNode::Class()), classes.end());
}

TEST(Module, AttachingSetsUpTheClassesInOrderOfRegistration)
{
    Module module;
    Calls calls;
    Record const first(L"First", module, calls, "first");
    Record const second(L"Second", module, calls, "second");
    EXPECT_FALSE(module.isAttached());
    EXPECT_TRUE(module.internalInit(image));
    EXPECT_TRUE(module.isAttached());
    EXPECT_EQ(calls, (Calls{"init first", "init second"}));
}

TEST(Module, DetachingClearsTheClassesInReverseOrder)
{
    Module module;
    Calls calls;
    Record const first(L"First", module, calls, "first");
    Record const second(L"Second", module, calls, "second");
    ASSERT_TRUE(module.internalInit(image));
    calls.clear();
    module.internalTerm();
    EXPECT_FALSE(module.isAttached());
    EXPECT_EQ(calls, (Calls{"clear second", "clear first"}));
    module.internalTerm();
    EXPECT_EQ(calls.size(), 2U);
}

TEST(Module, AttachingToTheSameImageAgainDoesNothing)
{
    Module module;
    Calls calls;
    Record const record(L"Class", module, calls, "class");
    ASSERT_TRUE(module.internalInit(image));
    EXPECT_TRUE(module.internalInit(image));
    EXPECT_EQ(calls.size(), 1U);
}

TEST(Module, CannotBeAttachedToTwoImages)
{
    Module module;
    Calls calls;
    Record const record(L"Class", module, calls, "class");
    ASSERT_TRUE(module.internalInit(image));
    EXPECT_FALSE(module.internalInit(otherImage));
    EXPECT_EQ(calls.size(), 1U);
    module.internalTerm();
    EXPECT_TRUE(module.internalInit(otherImage));
}

TEST(Module, CannotBeAttachedToANullHandle)
{
    Module module;
    EXPECT_FALSE(module.internalInit(nullptr));
    EXPECT_FALSE(module.isAttached());
    ASSERT_TRUE(module.internalInit(image));
    EXPECT_FALSE(module.internalInit(nullptr));
}

TEST(Module, AnExceptionDuringSetUpReachesTheCallerAndLeavesTheModuleDetached)
{
    Module module;
    FailingRecord const record(L"Class", nullptr, module, ClassVersion{0});
    EXPECT_THROW(static_cast<void>(module.internalInit(image)), std::runtime_error);
    EXPECT_FALSE(module.isAttached());
}

TEST(Module, RecordsMayBeAddedAndRemovedOnManyThreads)
{
    Module const module;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&module] {
            for (int round = 0; round < 1000; ++round) {
                oVClass const record(L"Class", nullptr, module, ClassVersion{0});
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_TRUE(module.classes().empty());
}

TEST(ClassVersion, ComparesByNumber)
{
    EXPECT_EQ(ClassVersion{}, ClassVersion{0});
    EXPECT_NE(ClassVersion{0}, ClassVersion{1});
}

} // namespace
