#include <roamscan/frame/formats/StatusCode.h>

#include <gtest/gtest.h>

#include <set>

namespace StatusCode = oV::StatusCode;

TEST(StatusCode, ToleratesTheseCodesAndNoOthers)
{
    std::set<int> const tolerated{0,  5,  12,  23,  24,  30,  31,  34,  42,  43,  50,  51,  52, 54,
                                  57, 87, 122, 124, 162, 209, 216, 268, 269, 274, 277, 279, 280};
    for (int status = -10; status <= 1000; ++status) {
        EXPECT_EQ(StatusCode::isTolerated(status), tolerated.contains(status)) << status;
    }
}

TEST(StatusCode, OfADamagedTextIsNotTolerated)
{
    for (int const status : {StatusCode::syntaxError,
                             StatusCode::unexpectedEnd,
                             StatusCode::wrongKind,
                             StatusCode::outOfRange,
                             StatusCode::tooDeep,
                             StatusCode::readFailed,
                             StatusCode::writeFailed,
                             StatusCode::noContext})
    {
        EXPECT_FALSE(StatusCode::isTolerated(status)) << status;
    }
    EXPECT_TRUE(StatusCode::isTolerated(StatusCode::unknownKeyword));
}

TEST(StatusCode, OfWritersIsSettled)
{
    EXPECT_EQ(StatusCode::writeFailed, 18);
    EXPECT_EQ(StatusCode::noContext, 27);
}

TEST(StatusCode, KeepsTheFirstThatIsNotZero)
{
    EXPECT_EQ(StatusCode::keep(0, 0), 0);
    EXPECT_EQ(StatusCode::keep(0, 5), 5);
    EXPECT_EQ(StatusCode::keep(0, 23), 23);
    EXPECT_EQ(StatusCode::keep(5, 12), 5);
    EXPECT_EQ(StatusCode::keep(5, 0), 5);
    EXPECT_EQ(StatusCode::keep(280, 23), 280);
}

TEST(StatusCode, Codes23And24AreReplacedByALaterCodeThatIsNotZero)
{
    EXPECT_EQ(StatusCode::keep(23, 5), 5);
    EXPECT_EQ(StatusCode::keep(24, 280), 280);
    EXPECT_EQ(StatusCode::keep(23, 24), 24);
    EXPECT_EQ(StatusCode::keep(24, 23), 23);
    EXPECT_EQ(StatusCode::keep(23, 0), 23);
    EXPECT_EQ(StatusCode::keep(24, 0), 24);
    EXPECT_EQ(StatusCode::keep(22, 5), 22);
    EXPECT_EQ(StatusCode::keep(25, 5), 25);
}

TEST(StatusCode, AKeptFailureStays)
{
    EXPECT_EQ(StatusCode::keep(StatusCode::syntaxError, 5), StatusCode::syntaxError);
    EXPECT_EQ(StatusCode::keep(StatusCode::syntaxError, 0), StatusCode::syntaxError);
}
