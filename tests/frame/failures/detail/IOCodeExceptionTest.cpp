#include "tests/support/NarrowText.h"
#include "tests/support/StringInside.h"

#include <roamscan/frame/failures/IntException.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/failures/detail/IOCodeException.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <exception>
#include <string>
#include <type_traits>

namespace
{

using Bv_1_1::String;
using oV::Roamscan::IOCodeException;
using support::narrow;

IOCodeException writeFailure()
{
    return {L"oV::Roamscan::LargeImageSerialization::serializeImage",
            L"LargeImageSerialization",
            42,
            18,
            L"Error writing image to 0.png"};
}

template <typename Caught>
bool catchTakes()
{
    try {
        throw writeFailure();
    } catch (Caught const&) {
        return true;
    } catch (...) {
        return false;
    }
}

TEST(IOCodeException, KeepsFunctionFileLineCodeAndMessage)
{
    IOCodeException const failure = writeFailure();
    EXPECT_EQ(narrow(failure.getFunction()), "oV::Roamscan::LargeImageSerialization::serializeImage");
    EXPECT_EQ(narrow(failure.getFile()), "LargeImageSerialization");
    EXPECT_EQ(failure.getLine(), 42U);
    EXPECT_EQ(narrow(failure.getDesc()), "Error writing image to 0.png");
    EXPECT_EQ(narrow(failure.extractMessage()), "Error writing image to 0.png");
}

TEST(IOCodeException, KeepsTheCodeInItselfAndInItsBase)
{
    IOCodeException const failure(L"f", L"File", 1, -18, L"Message");
    EXPECT_EQ(failure.getIOCode(), -18);
    EXPECT_EQ(failure.getCode(), -18);
    std::int32_t ownField = 0;
    std::memcpy(
        &ownField, reinterpret_cast<char const*>(&failure) + sizeof(oV::VisibleException), sizeof ownField);
    EXPECT_EQ(ownField, -18);
}

TEST(IOCodeException, TheTitleIsTheSameForAllCodesAndMessages)
{
    EXPECT_EQ(narrow(writeFailure().getTitle()), "IOCode-Exception");
    EXPECT_EQ(narrow(IOCodeException(L"f", L"File", 1, 0, String::NIL).getTitle()), "IOCode-Exception");
    EXPECT_EQ(narrow(IOCodeException(L"f", L"File", 1, -1, L"Title").getTitle()), "IOCode-Exception");
}

TEST(IOCodeException, IsCaughtAsItselfAndEachOfItsBases)
{
    EXPECT_TRUE(catchTakes<IOCodeException>());
    EXPECT_TRUE(catchTakes<oV::VisibleException>());
    EXPECT_TRUE(catchTakes<oV::ThrowableException>());
    EXPECT_TRUE(catchTakes<std::exception>());
    EXPECT_TRUE(catchTakes<oV::ExceptionBase>());
}

TEST(IOCodeException, IsNotCaughtAsAnInternalFailure)
{
    EXPECT_FALSE(catchTakes<oV::IntException>());
    EXPECT_FALSE(catchTakes<oV::InternalErrorException>());
}

TEST(IOCodeException, WhatContainsEverythingInOneLine)
{
    EXPECT_STREQ(writeFailure().what(),
                 "IOCode-Exception: Error writing image to 0.png [code 18] "
                 "(oV::Roamscan::LargeImageSerialization::serializeImage, LargeImageSerialization:42)");
}

TEST(IOCodeException, ACopyKeepsEverythingAndSharesTheTexts)
{
    String const message(L"Message");
    IOCodeException const failure(L"f", L"File", 42, 18, message);
    IOCodeException copy(writeFailure());
    copy = failure;
    IOCodeException const second(copy);
    EXPECT_EQ(second.getIOCode(), 18);
    EXPECT_EQ(second.getCode(), 18);
    EXPECT_EQ(second.getLine(), 42U);
    EXPECT_EQ(second.what(), failure.what());
    EXPECT_EQ(support::referenceCount(message), 4U); // ours and one of each failure
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<IOCodeException>);
}

} // namespace
