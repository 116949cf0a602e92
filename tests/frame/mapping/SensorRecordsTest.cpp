#include <roamscan/frame/mapping/AbsolutePose2DData.h>
#include <roamscan/frame/mapping/ImuData.h>
#include <roamscan/frame/mapping/RangefinderData.h>
#include <roamscan/frame/mapping/ScanningStatusData.h>
#include <roamscan/frame/mapping/TimeStamp.h>

#include <gtest/gtest.h>

#include <array>
#include <type_traits>
#include <utility>

namespace
{

using mapping::AbsolutePose2DData;
using mapping::ImuData;
using mapping::RangefinderData;
using mapping::Rigid3;
using mapping::ScanningStatusData;
using mapping::TimedPointCloud;
using mapping::TimeStamp;
using Vector = mapping::Vector3<double>;
using Uncertainty = std::array<Vector, 3>;

// Whether a const accessor of the record returns a reference to a member of this type.
template <typename Record, typename Member, typename Accessor>
constexpr bool refersTo(Accessor /*accessor*/)
{
    return std::is_same_v<Accessor, Member const& (Record::*)() const>;
}

TEST(SensorRecords, AccessorsOfInertialSamplesGiveConstReferences)
{
    EXPECT_TRUE((refersTo<ImuData, TimeStamp>(&ImuData::getTimeStamp)));
    EXPECT_TRUE((refersTo<ImuData, Vector>(&ImuData::getLinearAcceleration)));
    EXPECT_TRUE((refersTo<ImuData, Vector>(&ImuData::getAngularVelocity)));
    EXPECT_TRUE((refersTo<ImuData, bool>(&ImuData::hasMagneticField)));
    EXPECT_TRUE((refersTo<ImuData, Vector>(&ImuData::getMagneticField)));
}

TEST(SensorRecords, AccessorsOfRangeBurstsGiveConstReferences)
{
    EXPECT_TRUE((refersTo<RangefinderData, TimeStamp>(&RangefinderData::getTimeStamp)));
    EXPECT_TRUE((refersTo<RangefinderData, Vector>(&RangefinderData::getOrigin)));
    EXPECT_TRUE((refersTo<RangefinderData, TimedPointCloud>(&RangefinderData::getRanges)));
}

TEST(SensorRecords, AccessorsOfAbsolutePosesGiveConstReferences)
{
    EXPECT_TRUE((refersTo<AbsolutePose2DData, TimeStamp>(&AbsolutePose2DData::getTimeStamp)));
    EXPECT_TRUE((refersTo<AbsolutePose2DData, Rigid3<double>>(&AbsolutePose2DData::getPose)));
    EXPECT_TRUE((refersTo<AbsolutePose2DData, Uncertainty>(&AbsolutePose2DData::getTranslationUncertainty)));
    EXPECT_TRUE((refersTo<AbsolutePose2DData, Uncertainty>(&AbsolutePose2DData::getRotationUncertainty)));
}

TEST(SensorRecords, AccessorsOfScanningStatusGiveConstReferences)
{
    EXPECT_TRUE((refersTo<ScanningStatusData, TimeStamp>(&ScanningStatusData::getTimeStamp)));
    EXPECT_TRUE((refersTo<ScanningStatusData, bool>(&ScanningStatusData::getStationary)));
    EXPECT_TRUE((refersTo<ScanningStatusData, bool>(&ScanningStatusData::getStartNewSubmap)));
}

TEST(SensorRecords, CanBeCopied)
{
    EXPECT_TRUE(std::is_copy_constructible_v<ImuData>);
    EXPECT_TRUE(std::is_copy_constructible_v<RangefinderData>);
    EXPECT_TRUE(std::is_copy_constructible_v<AbsolutePose2DData>);
    EXPECT_TRUE(std::is_copy_constructible_v<ScanningStatusData>);
}

} // namespace
