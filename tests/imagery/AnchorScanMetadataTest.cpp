#include "tests/support/ScanMetadata.h"

#include <roamscan/imagery/AnchorScanMetadata.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

namespace
{

using namespace oV::Roamscan;
using namespace support;

static_assert(std::is_same_v<std::underlying_type_t<Content>, std::uint32_t>);
static_assert(std::is_same_v<std::underlying_type_t<ImageOrientation>, std::uint32_t>);
static_assert(static_cast<int>(Content::ContentUnknown) == 0);
static_assert(static_cast<int>(Content::ContentStitched) == 1);
static_assert(static_cast<int>(Content::ContentUnstitched) == 2);
static_assert(static_cast<int>(ImageOrientation::OrientationUnknown) == 0);
static_assert(static_cast<int>(ImageOrientation::OrientationUpright) == 1);
static_assert(static_cast<int>(ImageOrientation::OrientationUpToOuterSide) == 2);

} // namespace

TEST(AnchorScanMetadata, StartsWithZerosAndNoPicture)
{
    AnchorScanMetadata const metadata;
    EXPECT_EQ(changedIn(metadata), "");
    EXPECT_TRUE(metadata.panoramaPictures.empty());
}

TEST(AnchorScanMetadata, APictureStartsEmptyAndUnknown)
{
    EXPECT_EQ(changedIn(Picture()), "");
}

TEST(AnchorScanMetadata, IsWrittenWithItsKeysInAlphabeticOrder)
{
    EXPECT_EQ(json(fullMetadata()).dump(), fullText());
}

TEST(AnchorScanMetadata, APictureIsWrittenWithItsKeysInAlphabeticOrder)
{
    EXPECT_EQ(json(fullPicture()).dump(), fullPictureText);
}

TEST(AnchorScanMetadata, NumbersAreWrittenWithTheirTypes)
{
    json const j = fullMetadata();
    EXPECT_TRUE(j.at("id").is_number_unsigned());
    EXPECT_TRUE(j.at("horizontalVelocity").is_number_float());
    EXPECT_TRUE(j.at("horizontalAngle").is_number_float());
    for (json const& time : {j.at("startTime"), j.at("endTime"), j.at("panoramaPictures").at(0).at("time")}) {
        EXPECT_TRUE(time.is_number_integer());
        EXPECT_FALSE(time.is_number_unsigned());
    }
}

TEST(AnchorScanMetadata, WholeVelocitiesAreWrittenAsFloatingPoint)
{
    AnchorScanMetadata metadata;
    metadata.horizontalVelocity = 3.0;
    EXPECT_EQ(json(metadata).dump(),
              R"({"endTime":0,"horizontalAngle":0.0,"horizontalVelocity":3.0,"id":0,"startTime":0})");
}

TEST(AnchorScanMetadata, NoPicturesLeaveTheKeyOut)
{
    EXPECT_FALSE(json(AnchorScanMetadata()).contains("panoramaPictures"));
}

TEST(AnchorScanMetadata, PicturesAreWrittenInTheirOrder)
{
    AnchorScanMetadata metadata;
    for (char const* const name : {"c", "a", "b"}) {
        metadata.panoramaPictures.emplace_back().fileName = name;
    }
    json const pictures = json(metadata).at("panoramaPictures");
    ASSERT_EQ(pictures.size(), 3U);
    EXPECT_EQ(pictures[0].at("fileName"), "c");
    EXPECT_EQ(pictures[1].at("fileName"), "a");
    EXPECT_EQ(pictures[2].at("fileName"), "b");
}

TEST(AnchorScanMetadata, UnknownEnumerationsLeaveTheirKeysOut)
{
    EXPECT_EQ(
        json(Picture()).dump(),
        R"({"camFirmwareVersion":"","camManufacturer":"","camModel":"","camSerialNumber":"","fileName":"","time":0})");
}

TEST(AnchorScanMetadata, ValuesBeyondTheEnumerationsLeaveTheirKeysOut)
{
    for (std::uint32_t const value : {3U, 4'294'967'295U}) {
        Picture picture;
        picture.content = static_cast<Content>(value);
        picture.imageOrientation = static_cast<ImageOrientation>(value);
        EXPECT_EQ(json(picture), json(Picture())) << value;
    }
}

TEST(AnchorScanMetadata, EveryOrientationIsWrittenAsItsText)
{
    Picture picture;
    picture.imageOrientation = ImageOrientation::OrientationUpright;
    EXPECT_EQ(json(picture).at("imageOrientation"), "upright");
    picture.imageOrientation = ImageOrientation::OrientationUpToOuterSide;
    EXPECT_EQ(json(picture).at("imageOrientation"), "up_to_outer_side");
    EXPECT_FALSE(json(picture).contains("content"));
}

TEST(AnchorScanMetadata, EveryContentIsWrittenAsItsText)
{
    Picture picture;
    picture.content = Content::ContentStitched;
    EXPECT_EQ(json(picture).at("content"), "stitched");
    picture.content = Content::ContentUnstitched;
    EXPECT_EQ(json(picture).at("content"), "unstitched");
    EXPECT_FALSE(json(picture).contains("imageOrientation"));
}

TEST(AnchorScanMetadata, WritingReplacesWhatTheValueHeld)
{
    json j = json::array({1, 2});
    to_json(j, AnchorScanMetadata());
    EXPECT_EQ(j, json(AnchorScanMetadata()));
    j = {{"content", "stitched"}, {"more", 1}};
    to_json(j, Picture());
    EXPECT_EQ(j, json(Picture()));
}

TEST(AnchorScanMetadata, NonUtf8StringConvertsButCannotBeDumped)
{
    Picture picture;
    picture.fileName = "pano\xFF.jpg";
    json const j = picture;
    EXPECT_EQ(j.at("fileName").get<std::string>(), "pano\xFF.jpg");
    EXPECT_EQ(readFrom<Picture>(j).fileName, "pano\xFF.jpg");
    try {
        static_cast<void>(j.dump());
        FAIL() << "no exception";
    } catch (json::type_error const& failure) {
        EXPECT_EQ(failure.id, 316);
    }
}

TEST(AnchorScanMetadata, AVelocityThatIsNotFiniteIsNullInTextAndCannotBeReadBack)
{
    AnchorScanMetadata metadata;
    metadata.horizontalVelocity = std::numeric_limits<double>::infinity();
    json const j = metadata;
    EXPECT_EQ(readFrom<AnchorScanMetadata>(j).horizontalVelocity, metadata.horizontalVelocity);
    EXPECT_TRUE(json::parse(j.dump()).at("horizontalVelocity").is_null());
    EXPECT_THROW(readFrom<AnchorScanMetadata>(json::parse(j.dump())), json::type_error);
}

TEST(AnchorScanMetadata, AFullTextIsReadFieldByField)
{
    auto const metadata = readFrom<AnchorScanMetadata>(json::parse(fullText()));
    EXPECT_EQ(metadata.id, 4'000'000'000U);
    EXPECT_EQ(metadata.horizontalVelocity, 0.5);
    EXPECT_EQ(metadata.horizontalAngle, 6.25);
    EXPECT_EQ(metadata.startTime, -100);
    EXPECT_EQ(metadata.endTime, 9'223'372'036'854'775'807);
    ASSERT_EQ(metadata.panoramaPictures.size(), 1U);
    Picture const& picture = metadata.panoramaPictures[0];
    EXPECT_EQ(picture.fileName, "pano_01.jpg");
    EXPECT_EQ(picture.camSerialNumber, "0042");
    EXPECT_EQ(picture.content, Content::ContentStitched);
    EXPECT_EQ(picture.imageOrientation, ImageOrientation::OrientationUpToOuterSide);
    EXPECT_EQ(picture.camManufacturer, "Maker");
    EXPECT_EQ(picture.camModel, "Model 7");
    EXPECT_EQ(picture.camFirmwareVersion, "1.2.3");
    EXPECT_EQ(picture.time, -5);
}

TEST(AnchorScanMetadata, AFullTextReadAndWrittenAgainIsTheSameValue)
{
    json const j = json::parse(fullText());
    EXPECT_EQ(json(readFrom<AnchorScanMetadata>(j)), j);
    EXPECT_EQ(json(readFrom<AnchorScanMetadata>(j)).dump(), fullText());
}

TEST(AnchorScanMetadata, WithoutPicturesComesBackWithAnEmptyVector)
{
    EXPECT_TRUE(readFrom<AnchorScanMetadata>(json(AnchorScanMetadata())).panoramaPictures.empty());
}

TEST(AnchorScanMetadata, AnEmptyArrayOfPicturesReadsAsNone)
{
    EXPECT_TRUE(metadataWith("panoramaPictures", json::array()).panoramaPictures.empty());
}

TEST(AnchorScanMetadata, AbsentEnumerationsReadAsUnknown)
{
    Picture picture = fullPicture();
    json(Picture()).get_to(picture);
    EXPECT_EQ(picture.imageOrientation, ImageOrientation::OrientationUnknown);
    EXPECT_EQ(picture.content, Content::ContentUnknown);
}

TEST(AnchorScanMetadata, OtherKeysAreIgnored)
{
    json j = metadataJson();
    j["more"] = json::array({1, "two"});
    EXPECT_EQ(readFrom<AnchorScanMetadata>(j).id, 7U);
    EXPECT_EQ(pictureWith("more", 1).fileName, "pano_01.jpg");
}

TEST(AnchorScanMetadata, PicturesAreAppended)
{
    AnchorScanMetadata metadata;
    metadata.panoramaPictures.emplace_back().fileName = "before";
    json j = metadataJson();
    j["panoramaPictures"] = json::array({pictureJson(), pictureJson()});
    j["panoramaPictures"][1]["fileName"] = "last";
    j.get_to(metadata);
    ASSERT_EQ(metadata.panoramaPictures.size(), 3U);
    EXPECT_EQ(metadata.panoramaPictures[0].fileName, "before");
    EXPECT_EQ(metadata.panoramaPictures[1].fileName, "pano_01.jpg");
    EXPECT_EQ(metadata.panoramaPictures[2].fileName, "last");
}

TEST(AnchorScanMetadata, PicturesAreUnchangedIfTheKeyIsAbsent)
{
    AnchorScanMetadata metadata;
    metadata.panoramaPictures.emplace_back().fileName = "before";
    metadataJson().get_to(metadata);
    ASSERT_EQ(metadata.panoramaPictures.size(), 1U);
    EXPECT_EQ(metadata.panoramaPictures[0].fileName, "before");
}

TEST(AnchorScanMetadata, EveryOrientationIsReadFromItsText)
{
    EXPECT_EQ(pictureWith("imageOrientation", "upright").imageOrientation,
              ImageOrientation::OrientationUpright);
    EXPECT_EQ(pictureWith("imageOrientation", "up_to_outer_side").imageOrientation,
              ImageOrientation::OrientationUpToOuterSide);
}

TEST(AnchorScanMetadata, EveryContentIsReadFromItsText)
{
    EXPECT_EQ(pictureWith("content", "stitched").content, Content::ContentStitched);
    EXPECT_EQ(pictureWith("content", "unstitched").content, Content::ContentUnstitched);
}

TEST(AnchorScanMetadata, ACapitalFirstLetterReadsAsUnknownAndIsLostOnWriting)
{
    Picture const oriented = pictureWith("imageOrientation", "Upright");
    EXPECT_EQ(oriented.imageOrientation, ImageOrientation::OrientationUnknown);
    EXPECT_FALSE(json(oriented).contains("imageOrientation"));
    Picture const stitched = pictureWith("content", "Stitched");
    EXPECT_EQ(stitched.content, Content::ContentUnknown);
    EXPECT_FALSE(json(stitched).contains("content"));
}

TEST(AnchorScanMetadata, UnknownTextReadsAsUnknown)
{
    for (std::string const& text :
         {std::string(), std::string("sideways"), std::string("upright "), std::string("stitched\0", 9)})
    {
        EXPECT_EQ(pictureWith("imageOrientation", text).imageOrientation,
                  ImageOrientation::OrientationUnknown);
        EXPECT_EQ(pictureWith("content", text).content, Content::ContentUnknown);
    }
    EXPECT_EQ(pictureWith("imageOrientation", "stitched").imageOrientation,
              ImageOrientation::OrientationUnknown);
    EXPECT_EQ(pictureWith("content", "upright").content, Content::ContentUnknown);
}
