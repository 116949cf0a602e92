#include "tests/support/RandomPoses.h"

#include <roamscan/geometry/IRoamscanData.h>
#include <roamscan/geometry/RoamscanDataAdapter.h>
#include <roamscan/time/EigenConversion.h>
#include <roamscan/trajectory/InterpolatedTrajectoryPathBuilder.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace
{

using oV::Roamscan::Device;
using oV::Roamscan::InterpolatedTrajectoryPathBuilder;
using oV::Roamscan::IRoamscanData;
using oV::Roamscan::RoamscanDataAdapter;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::toEigen;
using oV::Roamscan::TrafoT;
using oV::Roamscan::Trajectory;

using ScanPoint = IRoamscanData::ScanPoint;

// One point. Records the arguments of the calls.
class OnePoint final : public RoamscanDataAdapter
{
public:
    std::optional<int64> time;
    ScanPoint point;
    int timeCalls = 0;
    int pointCalls = 0;
    int first = -1;
    int second = -1;
    double const* parameters = nullptr;

    bool getScanPtTime(int firstIndex, int secondIndex, int64* result) override
    {
        ++timeCalls;
        first = firstIndex;
        second = secondIndex;
        if (time) {
            *result = *time;
        }
        return time.has_value();
    }

    ScanPoint getLocalScanPt(int firstIndex, int secondIndex, double const* callersParameters) override
    {
        ++pointCalls;
        EXPECT_EQ(firstIndex, first);
        EXPECT_EQ(secondIndex, second);
        parameters = callersParameters;
        return point;
    }
};

ScanPoint pointAt(float x, float y, float z)
{
    ScanPoint point;
    point.position = {x, y, z};
    point.intensity = 50000;
    point.r = 1;
    point.g = 2;
    point.b = 3;
    point.a = 4;
    return point;
}

void expectPosition(ScanPoint const& point, float x, float y, float z)
{
    EXPECT_EQ(point.position.x, x);
    EXPECT_EQ(point.position.y, y);
    EXPECT_EQ(point.position.z, z);
}

void expectPayload(ScanPoint const& point, int intensity, int r, int g, int b, int a)
{
    EXPECT_EQ(point.intensity, intensity);
    EXPECT_EQ(point.r, r);
    EXPECT_EQ(point.g, g);
    EXPECT_EQ(point.b, b);
    EXPECT_EQ(point.a, a);
}

// From second 1 to 2, from x = 10 to x = 20, turned by a quarter about z throughout.
Trajectory shifting()
{
    double const h = std::sqrt(0.5);
    auto const at = [h](double x) {
        return TrafoT<double>(Eigen::Vector3d(x, 0, 0), Eigen::Quaterniond(h, 0, 0, h), true);
    };
    return InterpolatedTrajectoryPathBuilder()
        .addPose(TimeStamp(1), at(10))
        .addPose(TimeStamp(2), at(20))
        .build();
}

Trajectory counting(int& calls)
{
    return Trajectory(TimeStamp(1), TimeStamp(2), [&calls](double) {
        ++calls;
        return TrafoT<double>::Translation(Eigen::Vector3d(1, 1, 1));
    });
}

TEST(IRoamscanData, PlacesAPointByThePoseAtItsTime)
{
    OnePoint data;
    data.time = 150000000;
    data.point = pointAt(1, 2, 3);
    auto const global = data.getGlobalScanPt(7, 8, shifting(), nullptr);
    EXPECT_NEAR(global.position.x, 15 - 2, 1e-6);
    EXPECT_NEAR(global.position.y, 1, 1e-6);
    EXPECT_NEAR(global.position.z, 3, 1e-6);
    expectPayload(global, 50000, 1, 2, 3, 4);
    EXPECT_EQ(data.timeCalls, 1);
    EXPECT_EQ(data.pointCalls, 1);
}

TEST(IRoamscanData, PassesOnIndicesAndParametersUnchanged)
{
    OnePoint data;
    data.time = 150000000;
    data.point = pointAt(1, 2, 3);
    double const parameters[] = {1, 2, 3};
    (void)data.getGlobalScanPt(-5, 2000000000, shifting(), parameters);
    EXPECT_EQ(data.first, -5);
    EXPECT_EQ(data.second, 2000000000);
    EXPECT_EQ(data.parameters, parameters);
}

TEST(IRoamscanData, PointWithoutATimeIsZeroAndTheLocalPointIsNotRead)
{
    OnePoint data;
    data.point = pointAt(1, 2, 3);
    auto const global = data.getGlobalScanPt(0, 0, shifting(), nullptr);
    expectPayload(global, 0, 0, 0, 0, 0);
    expectPosition(global, 0, 0, 0);
    EXPECT_EQ(data.pointCalls, 0);
}

TEST(IRoamscanData, ATimeAtTheStopIsInside)
{
    OnePoint data;
    data.time = 200000000;
    data.point = pointAt(0, 0, 3);
    auto const global = data.getGlobalScanPt(0, 0, shifting(), nullptr);
    expectPosition(global, 20, 0, 3);
    expectPayload(global, 50000, 1, 2, 3, 4);
}

TEST(IRoamscanData, TimeAfterTheStopIsZeroAndTheLocalPointIsNotRead)
{
    // One tick past the stop the table would still answer, but the interval has no tolerance.
    OnePoint data;
    data.point = pointAt(1, 2, 3);
    for (int64 const outside : {200000001, 99999999, 0}) {
        data.time = outside;
        auto const global = data.getGlobalScanPt(0, 0, shifting(), nullptr);
        expectPayload(global, 0, 0, 0, 0, 0);
        expectPosition(global, 0, 0, 0);
    }
    EXPECT_EQ(data.pointCalls, 0);
    EXPECT_EQ(data.timeCalls, 3);
}

TEST(IRoamscanData, ZeroPositionIsReturnedUnchangedWithoutSampling)
{
    OnePoint data;
    data.time = 150000000;
    data.point = pointAt(0, -0.0F, 0);
    int calls = 0;
    auto const global = data.getGlobalScanPt(0, 0, counting(calls), nullptr);
    expectPosition(global, 0, 0, 0);
    expectPayload(global, 50000, 1, 2, 3, 4);
    EXPECT_EQ(calls, 0);
}

TEST(IRoamscanData, APositionThatIsZeroInTwoComponentsIsTransformed)
{
    OnePoint data;
    data.time = 150000000;
    int calls = 0;
    Trajectory const trajectory = counting(calls);
    for (auto const& point : {pointAt(5, 0, 0), pointAt(0, 5, 0), pointAt(0, 0, 5)}) {
        data.point = point;
        auto const global = data.getGlobalScanPt(0, 0, trajectory, nullptr);
        expectPosition(global, point.position.x + 1, point.position.y + 1, point.position.z + 1);
    }
    EXPECT_EQ(calls, 3);
}

TEST(IRoamscanData, RotatesByTheMatrixInDoubleAndNarrowsOnce)
{
    support::RandomPoses random(70);
    for (int i = 0; i < 1000; ++i) {
        auto pose = random.pose(1e6);
        Trajectory const trajectory(TimeStamp(0), TimeStamp(1), [&pose](double) { return pose; });
        OnePoint data;
        data.time = 50000000;
        data.point = pointAt(static_cast<float>(random.number(-9, 9)),
                             static_cast<float>(random.number(-9, 9)),
                             static_cast<float>(random.number(-9, 9)));
        auto const global = data.getGlobalScanPt(0, 0, trajectory, nullptr);
        auto const& local = data.point.position;
        Eigen::Vector3d const expected =
            pose.rotation().toRotationMatrix() * toEigen(local).cast<double>() + pose.translation();
        expectPosition(global,
                       static_cast<float>(expected.x()),
                       static_cast<float>(expected.y()),
                       static_cast<float>(expected.z()));
    }
}

TEST(IRoamscanData, RotatesByTheMatrixToTheLastBitOfADouble)
{
    // The translation cancels the rotated point exactly. Any other formula for the rotation leaves a rounding
    // error, which is visible in a float close to zero.
    support::RandomPoses random(71);
    for (int i = 0; i < 100; ++i) {
        OnePoint data;
        data.time = 0;
        data.point = pointAt(static_cast<float>(random.number(-9, 9)),
                             static_cast<float>(random.number(-9, 9)),
                             static_cast<float>(random.number(-9, 9)));
        auto const& local = data.point.position;
        TrafoT<double> pose = random.pose();
        pose.translation() = -(pose.rotation().toRotationMatrix() * toEigen(local).cast<double>());
        Trajectory const trajectory(TimeStamp(0), TimeStamp(1), [&pose](double) { return pose; });
        expectPosition(data.getGlobalScanPt(0, 0, trajectory, nullptr), 0, 0, 0);
    }
}

TEST(IRoamscanData, ContainsAndSamplesAtTheIntegerTimeAsTheTrajectoryConvertsIt)
{
    // 3 ticks are 3 * 1e-8 s, which is not the double 3e-8.
    double const threeTicks = 3.0 * 1e-8;
    ASSERT_NE(threeTicks, 3e-8);
    TimeStamp const instant(threeTicks);
    double asked = 0;
    Trajectory const trajectory(instant, instant, [&asked](double t) {
        asked = t;
        return TrafoT<double>();
    });
    OnePoint data;
    data.time = 3;
    data.point = pointAt(1, 2, 3);
    expectPosition(data.getGlobalScanPt(0, 0, trajectory, nullptr), 1, 2, 3);
    EXPECT_EQ(asked, threeTicks);
}

TEST(IRoamscanData, DoesNotNormaliseTheQuaternion)
{
    // The first column of the matrix of w = 3, z = 2 is (1 - 2 z^2, 2 w z, 0) = (-7, 12, 0).
    Trajectory const trajectory(TimeStamp(0), TimeStamp(1), [](double) {
        return TrafoT<double>(Eigen::Vector3d(100, 0, 0), Eigen::Quaterniond(3, 0, 0, 2), true);
    });
    OnePoint data;
    data.time = 0;
    data.point = pointAt(1, 0, 0);
    expectPosition(data.getGlobalScanPt(0, 0, trajectory, nullptr), 93, 12, 0);
}

TEST(IRoamscanData, ExceptionsOfThePoseFunctionPassThrough)
{
    Trajectory const trajectory(
        TimeStamp(0), TimeStamp(1), [](double) -> TrafoT<double> { throw std::logic_error("broken"); });
    OnePoint data;
    data.time = 0;
    data.point = pointAt(1, 2, 3);
    EXPECT_THROW((void)data.getGlobalScanPt(0, 0, trajectory, nullptr), std::logic_error);
}

TEST(IRoamscanData, HasNoGravityAxesUnlessOverridden)
{
    OnePoint const data;
    EXPECT_TRUE(data.getGravityAxisOfAnchorSections().empty());

    class WithGravity final : public RoamscanDataAdapter
    {
    public:
        bool getScanPtTime(int, int, int64*) override { return false; }
        ScanPoint getLocalScanPt(int, int, double const*) override { return {}; }
        [[nodiscard]] std::map<Device, std::map<int64, Eigen::Matrix<double, 3, 1>>>
        getGravityAxisOfAnchorSections() const override
        {
            return {{Device::Device1, {{5, Eigen::Vector3d(0, 0, -1)}}}};
        }
    };
    WithGravity const overridden;
    IRoamscanData const& base = overridden;
    EXPECT_EQ(base.getGravityAxisOfAnchorSections().at(Device::Device1).at(5), Eigen::Vector3d(0, 0, -1));
}

// The place of each operation in the table of virtual operations, as the platform's compiler lays it out: a
// pointer to a virtual member holds the offset of its entry.
#if defined(__GNUG__) && defined(__x86_64__)
template <typename Member>
std::size_t tableEntry(Member member)
{
    std::ptrdiff_t words[2];
    static_assert(sizeof(member) == sizeof(words));
    std::memcpy(words, &member, sizeof(words));
    return static_cast<std::size_t>(words[0] - 1) / sizeof(void*) + 1;
}

TEST(IRoamscanData, OperationsHaveTheirPlacesInTheVirtualTable)
{
    EXPECT_EQ(tableEntry(&IRoamscanData::reserved1), 1U);
    EXPECT_EQ(tableEntry(&IRoamscanData::reserved2), 2U);
    EXPECT_EQ(tableEntry(&IRoamscanData::getScanPtTime), 3U);
    EXPECT_EQ(tableEntry(&IRoamscanData::getLocalScanPt), 4U);
    EXPECT_EQ(tableEntry(&IRoamscanData::reserved3), 5U);
    EXPECT_EQ(tableEntry(&IRoamscanData::reserved20), 22U);
    EXPECT_EQ(tableEntry(&IRoamscanData::getGravityAxisOfAnchorSections), 23U);
    EXPECT_EQ(tableEntry(&IRoamscanData::reserved21), 24U);
}
#endif

TEST(IRoamscanData, HasNoPublicDestructor)
{
    static_assert(std::is_abstract_v<IRoamscanData>);
    static_assert(!std::has_virtual_destructor_v<IRoamscanData>);
    static_assert(!std::is_destructible_v<IRoamscanData>);
    static_assert(sizeof(IRoamscanData) == sizeof(void*));
    SUCCEED();
}

TEST(IRoamscanData, ADataSetCanBeCopiedAndMoved)
{
    OnePoint data;
    data.time = 150000000;
    OnePoint copy(data);
    OnePoint const moved(std::move(copy));
    EXPECT_EQ(moved.time, data.time);
    OnePoint assigned;
    assigned = moved;
    EXPECT_EQ(assigned.time, data.time);
    OnePoint moveAssigned;
    moveAssigned = std::move(assigned);
    EXPECT_EQ(moveAssigned.time, data.time);
}

TEST(RoamscanDataAdapter, ReservedOperationsDoNothing)
{
    OnePoint data;
    IRoamscanData& base = data;
    EXPECT_NO_THROW(base.reserved1());
    EXPECT_NO_THROW(base.reserved20());
    EXPECT_NO_THROW(base.reserved21());
    EXPECT_EQ(data.timeCalls + data.pointCalls, 0);
}

} // namespace
