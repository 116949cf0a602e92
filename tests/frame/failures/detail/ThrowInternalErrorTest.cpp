#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/failures/detail/ThrowInternalError.h>

#include <gtest/gtest.h>

#include <optional>

namespace
{

using oV::InternalErrorException;
using oV::Roamscan::detail::throwInternalError;

InternalErrorException
thrown(wchar_t const* message, char const* function, char const* file, unsigned int line)
{
    std::optional<InternalErrorException> failure;
    try {
        throwInternalError(message, function, file, line);
    } catch (InternalErrorException const& caught) {
        failure = caught;
    }
    return *failure;
}

TEST(ThrowInternalError, ThrowsMessageFunctionFileAndLine)
{
    InternalErrorException const failure =
        thrown(L"Message.", "oV::Roamscan::SensorData::operator +=", "SensorData", 42);
    EXPECT_STREQ(failure.getDesc().stringAnsi(), "Message.");
    EXPECT_STREQ(failure.getFunction().stringAnsi(), "oV::Roamscan::SensorData::operator +=");
    EXPECT_STREQ(failure.getFile().stringAnsi(), "SensorData");
    EXPECT_EQ(failure.getLine(), 42U);
}

TEST(ThrowInternalError, TakesNullPointersForTheNullString)
{
    InternalErrorException const failure = thrown(L"Message.", nullptr, nullptr, 42);
    EXPECT_TRUE(failure.getFunction().isNil());
    EXPECT_TRUE(failure.getFile().isNil());
}

TEST(ThrowInternalError, ReadsItsNarrowTextsAsUtf8)
{
    InternalErrorException const failure = thrown(L"Message.", "f\xC3\xBC", "\xFF", 42);
    EXPECT_EQ(failure.getFunction().text(), u"f\u00FC");
    EXPECT_EQ(failure.getFile().text(), u"\uFFFD");
}

} // namespace
