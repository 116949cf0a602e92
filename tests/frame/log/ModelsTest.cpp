#include "tests/support/NarrowText.h"
#include "tests/support/StringInside.h"
#include "tests/support/VirtualSlot.h"

#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/log/Models.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{

using Bv_1_1::BaseNode;
using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using oV::LogMessage;
using oV::Models;
using support::narrow;

SmartPtr<Models> newModels()
{
    SmartPtr<Models> models(new Models);
    models->init(BaseNode::CreateType::Fresh, nullptr);
    return models;
}

void append(Models& models, int number)
{
    String text;
    text << number;
    models.appendLogMsgExt(text, 1, "File", number, "function");
}

// Replaces the global list during a test.
class GlobalList : public testing::Test
{
protected:
    GlobalList() : former_(Models::list.exchange(nullptr)) {}

    ~GlobalList() override
    {
        if (Models* const own = Models::list.exchange(former_)) {
            own->dropReference();
        }
    }

private:
    Models* former_;
};

// The accessor

TEST_F(GlobalList, IsCreatedAtTheFirstCall)
{
    ASSERT_EQ(Models::list.load(), nullptr);
    Models& models = Models::the();
    EXPECT_EQ(Models::list.load(), &models);
    EXPECT_EQ(models.referenceCount(), 1U);
    EXPECT_TRUE(models.logMessages().empty());
}

TEST_F(GlobalList, IsTheSameEveryTime)
{
    Models& models = Models::the();
    EXPECT_EQ(&Models::the(), &models);
    EXPECT_EQ(models.referenceCount(), 1U);
}

TEST_F(GlobalList, UsesAnExistingList)
{
    SmartPtr<Models> const own = newModels();
    own->addReference();
    Models::list = own.get();
    EXPECT_EQ(&Models::the(), own.get());
    EXPECT_EQ(own->referenceCount(), 2U);
}

TEST_F(GlobalList, ConcurrentFirstCallsGetTheSameList)
{
    constexpr std::size_t threadCount = 4;
    for (int round = 0; round < 200; ++round) {
        std::vector<Models*> seen(threadCount);
        std::atomic<std::size_t> waiting = threadCount;
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < threadCount; ++i) {
            threads.emplace_back([&seen, &waiting, i] {
                --waiting;
                while (waiting > 0) {
                    std::this_thread::yield();
                }
                seen[i] = &Models::the();
                append(*seen[i], static_cast<int>(i));
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        Models* const models = Models::list.exchange(nullptr);
        for (Models* const other : seen) {
            EXPECT_EQ(other, models);
        }
        EXPECT_EQ(models->logMessages().size(), threadCount); // no message was added to a discarded list
        EXPECT_EQ(models->referenceCount(), 1U);
        models->dropReference();
    }
}

// The node

TEST(Models, IsANodeWithItsOwnClass)
{
    SmartPtr<Models> const models = newModels();
    EXPECT_EQ(models->getClassType(), Models::Class());
    EXPECT_EQ(std::wstring(Models::Class()->name()), L"Models");
    EXPECT_TRUE(Models::Class()->isDerivedFrom(BaseNode::Class()));
    EXPECT_EQ(Models::Class()->parent(), BaseNode::Class());
    EXPECT_EQ(Models::Class()->version().number, 0U);
}

TEST(Models, CanBeCreatedFromItsRecord)
{
    SmartPtr<BaseNode> const made(Models::Class()->create());
    ASSERT_TRUE(made);
    EXPECT_EQ(made->getClassType(), Models::Class());
}

TEST(Models, InitIsVirtual)
{
    if (!support::virtualSlotsAreKnown) {
        GTEST_SKIP() << "The places of virtual operations are not known here";
    }
    EXPECT_EQ(support::virtualSlot(&Models::init), 3U);
}

TEST(Models, InitCopiesTheMessagesOfItsSource)
{
    SmartPtr<Models> const source = newModels();
    append(*source, 1);
    SmartPtr<Models> const copy(new Models);
    append(*copy, 2);
    EXPECT_TRUE(copy->init(BaseNode::CreateType::Fresh, source.get()));
    ASSERT_EQ(copy->logMessages().size(), 1U);
    EXPECT_EQ(copy->logMessages()[0].line, 1);
    EXPECT_TRUE(copy->init(BaseNode::CreateType::Fresh, copy.get()));
    EXPECT_EQ(copy->logMessages().size(), 1U);
}

TEST(Models, InitWithoutASourceStartsEmpty)
{
    SmartPtr<Models> const source = newModels();
    append(*source, 1);
    SmartPtr<Models> const copy(new Models);
    append(*copy, 2);
    EXPECT_TRUE(copy->init(BaseNode::CreateType::NoSource, source.get()));
    EXPECT_TRUE(copy->logMessages().empty());
    append(*copy, 2);
    EXPECT_TRUE(copy->init(BaseNode::CreateType::Fresh, nullptr));
    EXPECT_TRUE(copy->logMessages().empty());
}

// The log

TEST(ModelsLog, KeepsEveryPartOfAMessage)
{
    SmartPtr<Models> const models = newModels();
    String const text(L"Unknown device detected: 7");
    models->appendLogMsgExt(text, 3, "TrajectoryData", 42, "oV::Roamscan::TrajectoryData::readFromStream");
    auto const messages = models->logMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(support::sharedValue(messages[0].message), support::sharedValue(text));
    EXPECT_EQ(messages[0].severity, 3);
    EXPECT_EQ(narrow(messages[0].file), "TrajectoryData");
    EXPECT_EQ(messages[0].line, 42);
    EXPECT_EQ(narrow(messages[0].function), "oV::Roamscan::TrajectoryData::readFromStream");
}

TEST(ModelsLog, ANullMessageStaysNull)
{
    SmartPtr<Models> const models = newModels();
    models->appendLogMsgExt(String::NIL, 1, nullptr, 0, nullptr);
    models->appendLogMsgExt(String::EMPTY, 1, "", 0, "");
    auto const messages = models->logMessages();
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_TRUE(messages[0].message.isNil());
    EXPECT_TRUE(messages[0].file.isNil());
    EXPECT_TRUE(messages[0].function.isNil());
    EXPECT_FALSE(messages[1].message.isNil());
    EXPECT_FALSE(messages[1].file.isNil());
    EXPECT_FALSE(messages[1].function.isNil());
}

TEST(ModelsLog, KeepsTheNewestMessagesOldestFirst)
{
    EXPECT_EQ(Models::logCapacity, 10000U);
    SmartPtr<Models> const models = newModels();
    for (int i = 0; i < 10000; ++i) {
        append(*models, i);
    }
    ASSERT_EQ(models->logMessages().size(), 10000U);
    EXPECT_EQ(models->logMessages().front().line, 0);
    append(*models, 10000);
    append(*models, 10001);
    auto const messages = models->logMessages();
    ASSERT_EQ(messages.size(), 10000U);
    EXPECT_EQ(messages.front().line, 2);
    EXPECT_EQ(messages.back().line, 10001);
}

TEST(ModelsLog, CanBeClearedAndUsedAgain)
{
    SmartPtr<Models> const models = newModels();
    int calls = 0;
    models->setLogSink([&calls](LogMessage const&) { ++calls; });
    append(*models, 1);
    models->clearLog();
    EXPECT_TRUE(models->logMessages().empty());
    append(*models, 2);
    EXPECT_EQ(models->logMessages().size(), 1U);
    EXPECT_EQ(calls, 2);
}

TEST(ModelsLog, PrintsNothing)
{
    SmartPtr<Models> const models = newModels();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    append(*models, 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(ModelsLog, PassesEachMessageToTheSink)
{
    SmartPtr<Models> const models = newModels();
    std::vector<LogMessage> received;
    append(*models, 0);
    models->setLogSink([&received](LogMessage const& message) { received.push_back(message); });
    append(*models, 1);
    append(*models, 2);
    ASSERT_EQ(received.size(), 2U);
    EXPECT_EQ(narrow(received[0].message), "1");
    EXPECT_EQ(received[0].severity, 1);
    EXPECT_EQ(narrow(received[0].file), "File");
    EXPECT_EQ(received[1].line, 2);
    EXPECT_EQ(narrow(received[1].function), "function");
    EXPECT_EQ(models->logMessages().size(), 3U);
}

TEST(ModelsLog, ASinkCanBeReplacedAndRemoved)
{
    SmartPtr<Models> const models = newModels();
    int first = 0;
    int second = 0;
    models->setLogSink([&first](LogMessage const&) { ++first; });
    models->setLogSink([&second](LogMessage const&) { ++second; });
    append(*models, 1);
    models->setLogSink({});
    append(*models, 2);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
    EXPECT_EQ(models->logMessages().size(), 2U);
}

TEST(ModelsLog, ASinkMayUseTheLog)
{
    SmartPtr<Models> const models = newModels();
    std::size_t kept = 0;
    models->setLogSink([&](LogMessage const& message) {
        kept = models->logMessages().size();
        models->setLogSink({});
        append(*models, message.line + 1);
    });
    append(*models, 1);
    EXPECT_EQ(kept, 1U); // the message is in the log before the sink gets it
    ASSERT_EQ(models->logMessages().size(), 2U);
    EXPECT_EQ(models->logMessages()[1].line, 2);
}

TEST(ModelsLog, AnExceptionOfTheSinkReachesTheCallerAndTheMessageIsKept)
{
    SmartPtr<Models> const models = newModels();
    models->setLogSink([](LogMessage const&) { throw std::runtime_error("sink"); });
    EXPECT_THROW(append(*models, 1), std::runtime_error);
    models->setLogSink({});
    append(*models, 2);
    EXPECT_EQ(models->logMessages().size(), 2U);
}

TEST(ModelsLog, AcceptsMessagesFromManyThreads)
{
    SmartPtr<Models> const models = newModels();
    std::atomic<int> received = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 500; ++round) {
                append(*models, round);
                models->setLogSink([&received](LogMessage const&) { ++received; });
                static_cast<void>(round % 100 == 0 ? models->logMessages().size() : 0);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(models->logMessages().size(), 2000U);
    EXPECT_GE(received, 1996); // each thread's first message may have come before the first sink
}

} // namespace
