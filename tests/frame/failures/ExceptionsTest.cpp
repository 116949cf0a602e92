#include "tests/support/NarrowText.h"
#include "tests/support/StringInside.h"
#include "tests/support/VirtualSlot.h"

#include <roamscan/frame/failures/ExceptionBase.h>
#include <roamscan/frame/failures/ExceptionStringExtractor.h>
#include <roamscan/frame/failures/IntException.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/failures/ThrowableException.h>
#include <roamscan/frame/failures/VisibleException.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace
{

using Bv_1_1::String;
using oV::ExceptionBase;
using oV::InternalErrorException;
using oV::IntException;
using oV::ThrowableException;
using oV::VisibleException;
using support::narrow;
using support::referenceCount;
using support::sharedValue;

InternalErrorException internalError()
{
    return {L"Message.", L"oV::Roamscan::Class::operation", L"Class", 42};
}

VisibleException visible()
{
    return {L"Title", L"", L"Function", L"File", 42, nullptr, -5, L"Message", L""};
}

// Whether a handler for `Caught` catches the failure.
template <typename Caught, typename Failure>
bool catchTakes(Failure const& failure)
{
    try {
        throw failure;
    } catch (Caught const&) {
        return true;
    } catch (...) {
        return false;
    }
}

class Words : public oV::ExceptionStringExtractor
{
public:
    [[nodiscard]] String extractString(int code) override
    {
        ++calls;
        String text(L"words for ");
        text << code;
        return text;
    }

    int calls = 0;
};

// Internal failures

TEST(InternalErrorException, KeepsMessageFunctionFileAndLine)
{
    String const message(L"Message.");
    InternalErrorException const failure(message, L"oV::Roamscan::Class::operation", L"Class", 42);
    EXPECT_TRUE(failure.getDesc() == message);
    EXPECT_EQ(sharedValue(failure.getDesc()), sharedValue(message));
    EXPECT_EQ(narrow(failure.getFunction()), "oV::Roamscan::Class::operation");
    EXPECT_EQ(narrow(failure.getFile()), "Class");
    EXPECT_EQ(failure.getLine(), 42U);
}

TEST(InternalErrorException, TheDescriptionIsAConstantByValue)
{
    EXPECT_TRUE((std::is_same_v<decltype(&ThrowableException::getDesc),
                                String const (ThrowableException::*)() const>));
}

TEST(InternalErrorException, NullStringsStayNull)
{
    InternalErrorException const failure(String::NIL, String::NIL, String::NIL, 0);
    EXPECT_TRUE(failure.getDesc().isNil());
    EXPECT_TRUE(failure.getFunction().isNil());
    EXPECT_TRUE(failure.getFile().isNil());
    EXPECT_EQ(failure.getLine(), 0U);
}

TEST(InternalErrorException, ACopyKeepsItsStringsAndItsLine)
{
    auto original = std::make_unique<InternalErrorException>(internalError());
    InternalErrorException const copy(*original);
    original.reset();
    EXPECT_EQ(narrow(copy.getDesc()), "Message.");
    EXPECT_EQ(narrow(copy.getFunction()), "oV::Roamscan::Class::operation");
    EXPECT_EQ(narrow(copy.getFile()), "Class");
    EXPECT_EQ(copy.getLine(), 42U);
    EXPECT_STREQ(copy.what(), "Message. (oV::Roamscan::Class::operation, Class:42)");
}

// The five strings follow the `std::exception` base, which consists of the pointer to the virtual table.
String const* stringsOf(ThrowableException const& failure)
{
    return reinterpret_cast<String const*>(reinterpret_cast<char const*>(&failure) + sizeof(std::exception));
}

TEST(InternalErrorException, ACopySharesAllFiveStringsByCountAndCopiesNoText)
{
    String const message(L"Message");
    String const function(L"Function");
    String const file(L"File");
    InternalErrorException const failure(message, function, file, 42);
    EXPECT_EQ(referenceCount(message), 2U);
    {
        InternalErrorException const copy(failure);
        EXPECT_EQ(referenceCount(message), 3U);
        EXPECT_EQ(referenceCount(function), 3U);
        EXPECT_EQ(referenceCount(file), 3U);
        for (std::size_t i = 0; i < 5; ++i) {
            EXPECT_EQ(sharedValue(stringsOf(copy)[i]), sharedValue(stringsOf(failure)[i])) << i;
        }
    }
    EXPECT_EQ(referenceCount(message), 2U);
    std::uint32_t line = 0;
    std::memcpy(&line,
                reinterpret_cast<char const*>(&failure) + sizeof(std::exception) + 5 * sizeof(String),
                sizeof line);
    EXPECT_EQ(line, 42U);
    EXPECT_EQ(sizeof(InternalErrorException), sizeof(ThrowableException));
}

TEST(InternalErrorException, AssignmentCopiesEverything)
{
    InternalErrorException failure(L"Other", L"other", L"Other", 1);
    failure = internalError();
    EXPECT_EQ(narrow(failure.getDesc()), "Message.");
    EXPECT_EQ(failure.getLine(), 42U);
    EXPECT_STREQ(failure.what(), "Message. (oV::Roamscan::Class::operation, Class:42)");
}

TEST(InternalErrorException, CopiesAreNoexcept)
{
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<InternalErrorException>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<InternalErrorException>);
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<VisibleException>);
}

TEST(InternalErrorException, IsCaughtAsItselfAndEachOfItsBases)
{
    EXPECT_TRUE(catchTakes<InternalErrorException>(internalError()));
    EXPECT_TRUE(catchTakes<IntException>(internalError()));
    EXPECT_TRUE(catchTakes<ThrowableException>(internalError()));
    EXPECT_TRUE(catchTakes<std::exception>(internalError()));
}

TEST(InternalErrorException, IsNotCaughtAsAVisibleFailure)
{
    EXPECT_FALSE(catchTakes<ExceptionBase>(internalError()));
    EXPECT_FALSE(catchTakes<VisibleException>(internalError()));
}

TEST(InternalErrorException, AnOutOfRangeIsNotAThrowableException)
{
    EXPECT_FALSE(catchTakes<ThrowableException>(std::out_of_range("Time point before the trajectory begin")));
    EXPECT_FALSE(catchTakes<ExceptionBase>(std::out_of_range("Time point before the trajectory begin")));
}

TEST(InternalErrorException, HasTheDestructorAndThenWhat)
{
    if (!support::virtualSlotsAreKnown) {
        GTEST_SKIP() << "The places of virtual operations are not known here";
    }
    struct Derived : InternalErrorException
    {
        using InternalErrorException::InternalErrorException;
        virtual void firstOfItsOwn() {}
    };
    EXPECT_EQ(support::virtualSlot(&ThrowableException::what), 2U); // after the destructor's two entries
    EXPECT_EQ(support::virtualSlot(&Derived::firstOfItsOwn), 3U);
    // All three inherit the function from their common base.
    EXPECT_TRUE((std::is_same_v<decltype(&InternalErrorException::what),
                                char const* (ThrowableException::*)() const noexcept>));
}

// what()

TEST(ThrowableException, WhatContainsTheDescriptionAndTheLocation)
{
    EXPECT_STREQ(internalError().what(), "Message. (oV::Roamscan::Class::operation, Class:42)");
}

TEST(ThrowableException, WhatOmitsMissingParts)
{
    EXPECT_STREQ(InternalErrorException(L"Message", String::NIL, L"Class", 42).what(), "Message (Class:42)");
    EXPECT_STREQ(InternalErrorException(L"Message", L"f", String::EMPTY, 42).what(), "Message (f)");
    EXPECT_STREQ(InternalErrorException(L"Message", String::NIL, String::NIL, 42).what(), "Message");
    EXPECT_STREQ(InternalErrorException(String::NIL, L"f", L"Class", 42).what(),
                 "Failure without a description (f, Class:42)");
}

TEST(ThrowableException, WhatIsNarrowText)
{
    EXPECT_STREQ(InternalErrorException(L"Gr\u00FC\u00DFe", String::NIL, String::NIL, 0).what(),
                 "Gr\xC3\xBC\xC3\x9F"
                 "e");
}

TEST(ThrowableException, WhatIsValidWhileTheFailureOrACopyExists)
{
    auto original = std::make_unique<InternalErrorException>(internalError());
    char const* const text = original->what();
    InternalErrorException const copy(*original);
    EXPECT_EQ(copy.what(), text);
    original.reset();
    EXPECT_STREQ(text, "Message. (oV::Roamscan::Class::operation, Class:42)");
}

// The header of a text is the count, the length and a pointer to the narrow text, if there is one.
TEST(ThrowableException, WhatAllocatesNoMemory)
{
    InternalErrorException const failure = internalError();
    bool found = false;
    for (std::size_t i = 0; i < 5; ++i) {
        char const* text = nullptr;
        if (void const* const value = sharedValue(stringsOf(failure)[i])) {
            std::memcpy(&text, static_cast<char const*>(value) + 8, sizeof text);
        }
        found = found || (text != nullptr &&
                          std::string(text) == "Message. (oV::Roamscan::Class::operation, Class:42)");
    }
    EXPECT_TRUE(found);
}

TEST(ThrowableException, ManyThreadsMayReadOneFailure)
{
    InternalErrorException const failure = internalError();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&failure] {
            for (int round = 0; round < 1000; ++round) {
                EXPECT_STREQ(failure.what(), "Message. (oV::Roamscan::Class::operation, Class:42)");
                EXPECT_EQ(narrow(failure.getDesc()), "Message.");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(ThrowableException, CopiesOfAFailureMayBeRethrownOnOtherThreads)
{
    std::exception_ptr const failure = std::make_exception_ptr(internalError());
    std::string text;
    std::thread([&] {
        try {
            std::rethrow_exception(failure);
        } catch (std::exception const& caught) {
            text = caught.what();
        }
    }).join();
    EXPECT_EQ(text, "Message. (oV::Roamscan::Class::operation, Class:42)");
}

// Visible failures

TEST(VisibleException, TakesItsArgumentsInTheirOrder)
{
    VisibleException const failure(
        L"Title", L"Second", L"Function", L"File", 42, nullptr, -5, L"Message", L"Last");
    EXPECT_EQ(narrow(failure.getTitle()), "Title");
    EXPECT_EQ(narrow(failure.getFunction()), "Function");
    EXPECT_EQ(narrow(failure.getFile()), "File");
    EXPECT_EQ(failure.getLine(), 42U);
    EXPECT_EQ(failure.getCode(), -5);
    EXPECT_EQ(narrow(failure.getDesc()), "Message");
    EXPECT_STREQ(failure.what(), "Title: Second: Message: Last [code -5] (Function, File:42)");
}

TEST(VisibleException, WhatOmitsEmptyParts)
{
    EXPECT_STREQ(visible().what(), "Title: Message [code -5] (Function, File:42)");
    String const& nil = String::NIL;
    EXPECT_STREQ(VisibleException(nil, nil, nil, nil, 0, nullptr, 18, nil, nil).what(), "[code 18]");
}

TEST(VisibleException, CallsTheExtractorOnce)
{
    Words words;
    VisibleException const failure(L"Title", L"", L"f", L"File", 42, &words, 7, L"Message", L"");
    EXPECT_EQ(words.calls, 1);
    EXPECT_STREQ(failure.what(), "Title: Message: words for 7 [code 7] (f, File:42)");
    EXPECT_EQ(narrow(failure.getDesc()), "Message");
    EXPECT_EQ(words.calls, 1);
}

TEST(VisibleException, ExtractsTheMessageOrTheTitleWithoutOne)
{
    EXPECT_EQ(narrow(visible().extractMessage()), "Message");
    VisibleException const bare(L"Title", L"", L"f", L"File", 42, nullptr, 7, String::NIL, L"");
    EXPECT_EQ(narrow(bare.extractMessage()), "Title");
    EXPECT_TRUE(bare.getDesc().isNil());
}

TEST(VisibleException, IsCaughtAsItselfAndBothBases)
{
    EXPECT_TRUE(catchTakes<VisibleException>(visible()));
    EXPECT_TRUE(catchTakes<ThrowableException>(visible()));
    EXPECT_TRUE(catchTakes<ExceptionBase>(visible()));
    EXPECT_TRUE(catchTakes<std::exception>(visible()));
    EXPECT_FALSE(catchTakes<IntException>(visible()));
}

TEST(VisibleException, BothBasesReferToTheSameFailure)
{
    VisibleException const failure = visible();
    ThrowableException const& first = failure;
    ExceptionBase const& second = failure;
    EXPECT_STREQ(first.what(), failure.what());
    EXPECT_EQ(narrow(second.extractMessage()), "Message");
}

TEST(VisibleException, ACopyKeepsEverything)
{
    VisibleException const failure = visible();
    VisibleException copy(L"", L"", L"", L"", 0, nullptr, 0, L"", L"");
    copy = failure;
    VisibleException const second(copy);
    EXPECT_EQ(narrow(second.getTitle()), "Title");
    EXPECT_EQ(narrow(second.getDesc()), "Message");
    EXPECT_EQ(second.getCode(), -5);
    EXPECT_EQ(second.what(), failure.what());
    EXPECT_EQ(sharedValue(second.getTitle()), sharedValue(failure.getTitle()));
}

TEST(VisibleException, AddsTheSecondBaseAndOneWord)
{
    EXPECT_EQ(sizeof(VisibleException), sizeof(ThrowableException) + sizeof(ExceptionBase) + 8);
    VisibleException const failure = visible();
    auto const* const base = static_cast<ExceptionBase const*>(&failure);
    EXPECT_EQ(reinterpret_cast<char const*>(base) - reinterpret_cast<char const*>(&failure),
              static_cast<std::ptrdiff_t>(sizeof(ThrowableException)));
}

TEST(VisibleException, HasItsOwnWhatAndTheSecondTableHasTheDestructorAndThenTheMessage)
{
    EXPECT_TRUE((std::is_same_v<decltype(&VisibleException::what),
                                char const* (VisibleException::*)() const noexcept>));
    if (!support::virtualSlotsAreKnown) {
        GTEST_SKIP() << "The places of virtual operations are not known here";
    }
    EXPECT_EQ(support::virtualSlot(&VisibleException::what), 2U);
    EXPECT_EQ(support::virtualSlot(&ExceptionBase::extractMessage), 2U);
}

TEST(ExceptionBase, HasNoBaseAndNoData)
{
    EXPECT_EQ(sizeof(ExceptionBase), sizeof(void*));
    EXPECT_FALSE((std::is_base_of_v<std::exception, ExceptionBase>));
}

} // namespace
