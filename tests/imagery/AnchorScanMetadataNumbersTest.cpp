#include "tests/support/ScanMetadata.h"

#include <roamscan/imagery/AnchorScanMetadata.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace
{

using namespace oV::Roamscan;
using support::json;
using support::metadataWith;
using support::pictureWith;

} // namespace

TEST(AnchorScanMetadata, AnIdOfTrueReadsAsOneAndOfFalseAsZero)
{
    EXPECT_EQ(metadataWith("id", true).id, 1U);
    EXPECT_EQ(metadataWith("id", false).id, 0U);
}

TEST(AnchorScanMetadata, AFloatingPointIdIsTruncated)
{
    EXPECT_EQ(metadataWith("id", 3.9).id, 3U);
    EXPECT_EQ(metadataWith("id", -0.9).id, 0U);
    EXPECT_EQ(metadataWith("id", 4294967295.9).id, 4'294'967'295U);
}

TEST(AnchorScanMetadata, AWholeIdIsCutTo32Bits)
{
    EXPECT_EQ(metadataWith("id", 4'294'967'295U).id, 4'294'967'295U);
    EXPECT_EQ(metadataWith("id", 4'294'967'301).id, 5U);
    EXPECT_EQ(metadataWith("id", -1).id, 4'294'967'295U);
    EXPECT_EQ(metadataWith("id", std::numeric_limits<std::uint64_t>::max()).id, 4'294'967'295U);
    EXPECT_EQ(metadataWith("id", std::numeric_limits<std::int64_t>::min()).id, 0U);
}

TEST(AnchorScanMetadata, AFloatingPointIdIsCutTo32Bits)
{
    EXPECT_EQ(metadataWith("id", 4294967301.5).id, 5U);
    EXPECT_EQ(metadataWith("id", -1.5).id, 4'294'967'295U);
    EXPECT_EQ(metadataWith("id", 0x1p33 + 7).id, 7U);
    EXPECT_EQ(metadataWith("id", -0x1p33 - 7).id, 4'294'967'289U);
    EXPECT_EQ(metadataWith("id", 0x1p83 + 0x1p31).id, 0x8000'0000U);
    EXPECT_EQ(metadataWith("id", 1e300).id, 0U);
}

TEST(AnchorScanMetadata, NonFiniteIdReadsAsZero)
{
    for (double const value : {std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity()})
    {
        EXPECT_EQ(metadataWith("id", value).id, 0U);
    }
}

TEST(AnchorScanMetadata, VelocityAndAngleTakeEveryKindOfNumber)
{
    for (char const* const key : {"horizontalVelocity", "horizontalAngle"}) {
        bool const isVelocity = std::string(key) == "horizontalVelocity";
        auto const valueOf = [&](json const& value) {
            AnchorScanMetadata const metadata = metadataWith(key, value);
            return isVelocity ? metadata.horizontalVelocity : metadata.horizontalAngle;
        };
        EXPECT_EQ(valueOf(-0.125), -0.125);
        EXPECT_EQ(valueOf(-3), -3.0);
        EXPECT_EQ(valueOf(3U), 3.0);
        EXPECT_EQ(valueOf(std::numeric_limits<std::uint64_t>::max()), 0x1p64);
        EXPECT_TRUE(std::isnan(valueOf(std::numeric_limits<double>::quiet_NaN())));
    }
}

TEST(AnchorScanMetadata, TimesTakeEveryKindOfNumber)
{
    EXPECT_EQ(metadataWith("startTime", std::numeric_limits<std::int64_t>::min()).startTime,
              std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(metadataWith("startTime", 12U).startTime, 12);
    EXPECT_EQ(metadataWith("startTime", 12.9).startTime, 12);
    EXPECT_EQ(metadataWith("endTime", -12).endTime, -12);
    EXPECT_EQ(metadataWith("endTime", 12U).endTime, 12);
    EXPECT_EQ(metadataWith("endTime", -12.9).endTime, -12);
    EXPECT_EQ(pictureWith("time", -12).time, -12);
    EXPECT_EQ(pictureWith("time", 12U).time, 12);
    EXPECT_EQ(pictureWith("time", -0.9).time, 0);
}

TEST(AnchorScanMetadata, AnUnsignedTimeAboveTheSignedRangeKeepsItsBits)
{
    std::uint64_t const largest = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(metadataWith("startTime", largest).startTime, -1);
    EXPECT_EQ(metadataWith("endTime", largest - 1).endTime, -2);
    EXPECT_EQ(pictureWith("time", std::uint64_t{1} << 63U).time, std::numeric_limits<std::int64_t>::min());
}

TEST(AnchorScanMetadata, AFloatingPointTimeIsTruncatedTo64Bits)
{
    EXPECT_EQ(metadataWith("startTime", 9007199254740993.0).startTime, 9'007'199'254'740'992);
    EXPECT_EQ(metadataWith("startTime", -0x1p63).startTime, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(metadataWith("startTime", 0x1p63).startTime, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(metadataWith("endTime", 0x1p64 + 0x1p20).endTime, 1'048'576);
    EXPECT_EQ(metadataWith("endTime", -0x1p64 - 0x1p20).endTime, -1'048'576);
    EXPECT_EQ(pictureWith("time", 1e300).time, 0);
    EXPECT_EQ(pictureWith("time", std::numeric_limits<double>::quiet_NaN()).time, 0);
    EXPECT_EQ(pictureWith("time", -std::numeric_limits<double>::infinity()).time, 0);
}
