#include <roamscan/imagery/AnchorScanMetadata.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace oV::Roamscan
{

namespace
{

using nlohmann::json;
using Picture = AnchorScanMetadata::PanoramaPicture;
using Content = Picture::Content;
using ImageOrientation = Picture::ImageOrientation;

static_assert(std::is_same_v<std::underlying_type_t<Content>, std::uint32_t>);
static_assert(std::is_same_v<std::underlying_type_t<ImageOrientation>, std::uint32_t>);
static_assert(static_cast<int>(Content::ContentUnknown) == 0);
static_assert(static_cast<int>(Content::ContentStitched) == 1);
static_assert(static_cast<int>(Content::ContentUnstitched) == 2);
static_assert(static_cast<int>(ImageOrientation::OrientationUnknown) == 0);
static_assert(static_cast<int>(ImageOrientation::OrientationUpright) == 1);
static_assert(static_cast<int>(ImageOrientation::OrientationUpToOuterSide) == 2);

// The fields in the order of their declaration, by aggregate initialisation.
Picture fullPicture()
{
    return {"pano_01.jpg",
            "0042",
            Content::ContentStitched,
            ImageOrientation::OrientationUpToOuterSide,
            "Maker",
            "Model 7",
            "1.2.3",
            -5};
}

AnchorScanMetadata fullMetadata()
{
    return {4'000'000'000U, 0.5, 6.25, -100, 9'223'372'036'854'775'807, {fullPicture()}};
}

char const* const fullPictureText =
    R"({"camFirmwareVersion":"1.2.3","camManufacturer":"Maker","camModel":"Model 7",)"
    R"("camSerialNumber":"0042","content":"stitched","fileName":"pano_01.jpg",)"
    R"("imageOrientation":"up_to_outer_side","time":-5})";

std::string fullText()
{
    return R"({"endTime":9223372036854775807,"horizontalAngle":6.25,"horizontalVelocity":0.5,"id":4000000000,)"
           R"("panoramaPictures":[)" +
           std::string(fullPictureText) + R"(],"startTime":-100})";
}

json pictureJson()
{
    return json::parse(fullPictureText);
}

/// Without pictures.
json metadataJson()
{
    return json::parse(
        R"({"id":7,"horizontalVelocity":1.5,"horizontalAngle":2.5,"startTime":10,"endTime":20})");
}

template <typename Value>
Value readFrom(json const& j)
{
    Value value;
    j.get_to(value);
    return value;
}

/// The metadata that comes of a document whose key holds something else.
AnchorScanMetadata metadataWith(char const* key, json const& value)
{
    json j = metadataJson();
    j[key] = value;
    return readFrom<AnchorScanMetadata>(j);
}

Picture pictureWith(char const* key, json const& value)
{
    json j = pictureJson();
    j[key] = value;
    return readFrom<Picture>(j);
}

/// The id of the exception that reading into the target ends with, and its text; 0 if there is none.
struct Failure
{
    int id = 0;
    std::string text;
};

template <typename Value>
Failure failureOfReading(json const& j, Value& target)
{
    try {
        j.get_to(target);
    } catch (json::type_error const& failure) {
        EXPECT_TRUE(failure.id == 302 || failure.id == 304) << failure.what();
        return {failure.id, failure.what()};
    } catch (json::out_of_range const& failure) {
        EXPECT_EQ(failure.id, 403) << failure.what();
        return {failure.id, failure.what()};
    }
    return {};
}

template <typename Value>
Failure failureOfReading(json const& j)
{
    Value target;
    return failureOfReading(j, target);
}

/// The same with the key's value replaced.
template <typename Value>
Failure failureWith(json j, char const* key, json const& value)
{
    j[key] = value;
    return failureOfReading<Value>(j);
}

std::vector<json> const nonStrings{
    nullptr, true, 5, -5, 5U, 0.5, json::array({"upright"}), json::object({{"a", "upright"}})};
std::vector<json> const nonNumbers{nullptr, "1", json::array({1}), json::object({{"a", 1}})};
std::vector<json> const nonArrays{
    nullptr, true, 5, 0.5, "pictures", json::object(), json::object({{"a", fullPictureText}})};

std::vector<char const*> const pictureKeys{
    "fileName", "camSerialNumber", "camManufacturer", "camModel", "camFirmwareVersion", "time"};
std::vector<char const*> const metadataKeys{
    "id", "horizontalVelocity", "horizontalAngle", "startTime", "endTime"};

/// Which of the picture's parts differ from those of a default one, in the order of reading.
std::string changedIn(Picture const& picture)
{
    std::string changed;
    changed += picture.fileName.empty() ? "" : "fileName ";
    changed += picture.camSerialNumber.empty() ? "" : "camSerialNumber ";
    changed += picture.camManufacturer.empty() ? "" : "camManufacturer ";
    changed += picture.camModel.empty() ? "" : "camModel ";
    changed += picture.camFirmwareVersion.empty() ? "" : "camFirmwareVersion ";
    changed += picture.time == 0 ? "" : "time ";
    changed += picture.imageOrientation == ImageOrientation::OrientationUnknown ? "" : "imageOrientation ";
    changed += picture.content == Content::ContentUnknown ? "" : "content ";
    return changed;
}

/// The same for metadata.
std::string changedIn(AnchorScanMetadata const& metadata)
{
    std::string changed;
    changed += metadata.id == 0 ? "" : "id ";
    changed += metadata.horizontalVelocity == 0.0 ? "" : "horizontalVelocity ";
    changed += metadata.horizontalAngle == 0.0 ? "" : "horizontalAngle ";
    changed += metadata.startTime == 0 ? "" : "startTime ";
    changed += metadata.endTime == 0 ? "" : "endTime ";
    return changed;
}

} // namespace

// ------------------------------------------------------------------------------------------------ defaults

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

// ------------------------------------------------------------------------------------------------- writing

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

TEST(AnchorScanMetadata, TextThatIsNotUtf8MakesAValueButNoText)
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
    EXPECT_EQ(failureOfReading<AnchorScanMetadata>(json::parse(j.dump())).id, 302);
}

// ------------------------------------------------------------------------------------------------- reading

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

TEST(AnchorScanMetadata, AbsentEnumerationsReadAsUnknownWhateverStoodThere)
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

TEST(AnchorScanMetadata, PicturesAreAppendedToThoseThatAreThere)
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

TEST(AnchorScanMetadata, PicturesStayWhereTheKeyIsAbsent)
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

// --------------------------------------------------------------------------------------- types of numbers

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

TEST(AnchorScanMetadata, WhatIsNotFiniteReadsAsIdZero)
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

// ------------------------------------------------------------------------------------------------ failures

TEST(AnchorScanMetadata, AMissingKeyIsReportedByItsName)
{
    for (char const* const key : metadataKeys) {
        json j = metadataJson();
        j.erase(key);
        Failure const failure = failureOfReading<AnchorScanMetadata>(j);
        EXPECT_EQ(failure.id, 403);
        EXPECT_NE(failure.text.find("key '" + std::string(key) + "' not found"), std::string::npos)
            << failure.text;
    }
}

TEST(AnchorScanMetadata, AMissingKeyOfAPictureIsReportedByItsName)
{
    for (char const* const key : pictureKeys) {
        json j = pictureJson();
        j.erase(key);
        Failure const failure = failureOfReading<Picture>(j);
        EXPECT_EQ(failure.id, 403);
        EXPECT_NE(failure.text.find("key '" + std::string(key) + "' not found"), std::string::npos)
            << failure.text;
    }
}

TEST(AnchorScanMetadata, WhatIsNoObjectIsATypeError304)
{
    for (json const& j : std::vector<json>{nullptr,
                                           true,
                                           5,
                                           5U,
                                           0.5,
                                           "text",
                                           json::array(),
                                           json::array({metadataJson()}),
                                           json(json::value_t::discarded)})
    {
        EXPECT_EQ(failureOfReading<AnchorScanMetadata>(j).id, 304) << j.type_name();
        EXPECT_EQ(failureOfReading<Picture>(j).id, 304) << j.type_name();
    }
}

TEST(AnchorScanMetadata, AnIdThatIsNoNumberAndNoBooleanIsATypeError302)
{
    for (json const& value : nonNumbers) {
        Failure const failure = failureWith<AnchorScanMetadata>(metadataJson(), "id", value);
        EXPECT_EQ(failure.id, 302);
        EXPECT_NE(failure.text.find("type must be number, but is " + std::string(value.type_name())),
                  std::string::npos)
            << failure.text;
    }
}

TEST(AnchorScanMetadata, AVelocityAnAngleOrATimeThatIsNoNumberIsATypeError302)
{
    for (char const* const key : {"horizontalVelocity", "horizontalAngle", "startTime", "endTime"}) {
        for (json const& value : nonNumbers) {
            Failure const failure = failureWith<AnchorScanMetadata>(metadataJson(), key, value);
            EXPECT_EQ(failure.id, 302) << key;
            EXPECT_NE(failure.text.find("type must be number, but is " + std::string(value.type_name())),
                      std::string::npos)
                << failure.text;
        }
    }
}

TEST(AnchorScanMetadata, ABooleanIsNoVelocityNoAngleAndNoTime)
{
    for (char const* const key : {"horizontalVelocity", "horizontalAngle", "startTime", "endTime"}) {
        EXPECT_EQ(failureWith<AnchorScanMetadata>(metadataJson(), key, true).id, 302) << key;
    }
    EXPECT_EQ(failureWith<Picture>(pictureJson(), "time", true).id, 302);
}

TEST(AnchorScanMetadata, APictureTimeThatIsNoNumberIsATypeError302)
{
    for (json const& value : nonNumbers) {
        EXPECT_EQ(failureWith<Picture>(pictureJson(), "time", value).id, 302) << value;
    }
}

TEST(AnchorScanMetadata, WhatIsNoStringIsATypeError302WhereAStringBelongs)
{
    for (char const* const key :
         {"fileName", "camSerialNumber", "camManufacturer", "camModel", "camFirmwareVersion"})
    {
        for (json const& value : nonStrings) {
            Failure const failure = failureWith<Picture>(pictureJson(), key, value);
            EXPECT_EQ(failure.id, 302) << key;
            EXPECT_NE(failure.text.find("type must be string, but is " + std::string(value.type_name())),
                      std::string::npos)
                << failure.text;
        }
    }
}

TEST(AnchorScanMetadata, AnOrientationThatIsNoStringIsATypeError302)
{
    for (json const& value : nonStrings) {
        EXPECT_EQ(failureWith<Picture>(pictureJson(), "imageOrientation", value).id, 302) << value;
    }
}

TEST(AnchorScanMetadata, AContentThatIsNoStringIsATypeError302)
{
    for (json const& value : nonStrings) {
        EXPECT_EQ(failureWith<Picture>(pictureJson(), "content", value).id, 302) << value;
    }
}

TEST(AnchorScanMetadata, PicturesThatAreNoArrayAreATypeError302)
{
    for (json const& value : nonArrays) {
        AnchorScanMetadata target;
        target.panoramaPictures.emplace_back().fileName = "before";
        json j = metadataJson();
        j["panoramaPictures"] = value;
        Failure const failure = failureOfReading(j, target);
        EXPECT_EQ(failure.id, 302) << value;
        EXPECT_NE(failure.text.find("type must be array, but is " + std::string(value.type_name())),
                  std::string::npos)
            << failure.text;
        EXPECT_EQ(target.panoramaPictures.size(), 1U);
    }
}

TEST(AnchorScanMetadata, AnElementThatIsNoObjectIsATypeError304)
{
    EXPECT_EQ(failureWith<AnchorScanMetadata>(metadataJson(), "panoramaPictures", json::array({5})).id, 304);
}

TEST(AnchorScanMetadata, AFailureInsideAPicturePassesThrough)
{
    json picture = pictureJson();
    picture["imageOrientation"] = 5;
    EXPECT_EQ(failureWith<AnchorScanMetadata>(metadataJson(), "panoramaPictures", json::array({picture})).id,
              302);
    picture.erase("fileName");
    EXPECT_EQ(failureWith<AnchorScanMetadata>(metadataJson(), "panoramaPictures", json::array({picture})).id,
              403);
}

TEST(AnchorScanMetadata, KeysOfMetadataAreReadInTheirOrder)
{
    // From the last key back, each bad one in turn is the first that is reported, whatever comes behind it.
    json j = metadataJson();
    j["panoramaPictures"] = 5;
    EXPECT_NE(failureOfReading<AnchorScanMetadata>(j).text.find("must be array"), std::string::npos);
    for (std::size_t i = metadataKeys.size(); i-- > 0;) {
        j.erase(metadataKeys[i]);
        EXPECT_NE(failureOfReading<AnchorScanMetadata>(j).text.find("'" + std::string(metadataKeys[i]) + "'"),
                  std::string::npos);
    }
}

TEST(AnchorScanMetadata, KeysOfAPictureAreReadInTheirOrder)
{
    json j = pictureJson();
    j["imageOrientation"] = 5;
    j["content"] = nullptr;
    EXPECT_NE(failureOfReading<Picture>(j).text.find("but is number"), std::string::npos);
    for (std::size_t i = pictureKeys.size(); i-- > 0;) {
        j.erase(pictureKeys[i]);
        EXPECT_NE(failureOfReading<Picture>(j).text.find("'" + std::string(pictureKeys[i]) + "'"),
                  std::string::npos);
    }
}

TEST(AnchorScanMetadata, AMissingKeyBeforeOneOfTheWrongTypeIsReported)
{
    json j = metadataJson();
    j["endTime"] = "late";
    j.erase("startTime");
    EXPECT_EQ(failureOfReading<AnchorScanMetadata>(j).id, 403);
    j = metadataJson();
    j["id"] = "one";
    j.erase("endTime");
    EXPECT_EQ(failureOfReading<AnchorScanMetadata>(j).id, 302);
}

TEST(AnchorScanMetadata, FieldsBeforeTheFailureAreNewAndLaterOnesOld)
{
    std::string before;
    for (char const* const key : metadataKeys) {
        json j = metadataJson();
        j[key] = nullptr;
        j["panoramaPictures"] = json::array({pictureJson()});
        AnchorScanMetadata target;
        EXPECT_EQ(failureOfReading(j, target).id, 302);
        EXPECT_EQ(changedIn(target), before);
        EXPECT_TRUE(target.panoramaPictures.empty());
        before += std::string(key) + " ";
    }
}

TEST(AnchorScanMetadata, FieldsOfAPictureBeforeTheFailureAreNewAndLaterOnesOld)
{
    std::string before;
    for (char const* const key : {"fileName",
                                  "camSerialNumber",
                                  "camManufacturer",
                                  "camModel",
                                  "camFirmwareVersion",
                                  "time",
                                  "imageOrientation",
                                  "content"})
    {
        json j = pictureJson();
        j[key] = nullptr;
        Picture target;
        EXPECT_EQ(failureOfReading(j, target).id, 302);
        EXPECT_EQ(changedIn(target), before);
        before += std::string(key) + " ";
    }
}

TEST(AnchorScanMetadata, LaterFieldsKeepTheirOldValuesOnAFailure)
{
    AnchorScanMetadata metadata = fullMetadata();
    json j = metadataJson();
    j.erase("horizontalAngle");
    EXPECT_EQ(failureOfReading(j, metadata).id, 403);
    EXPECT_EQ(metadata.id, 7U);
    EXPECT_EQ(metadata.horizontalVelocity, 1.5);
    EXPECT_EQ(metadata.horizontalAngle, 6.25);
    EXPECT_EQ(metadata.startTime, -100);
    EXPECT_EQ(metadata.endTime, 9'223'372'036'854'775'807);
    EXPECT_EQ(metadata.panoramaPictures.size(), 1U);
}

TEST(AnchorScanMetadata, AnOrientationOfTheWrongTypeLeavesItUnknownAndTheContentOld)
{
    Picture picture = fullPicture();
    json j = pictureJson();
    j["imageOrientation"] = 5;
    j["content"] = "unstitched";
    EXPECT_EQ(failureOfReading(j, picture).id, 302);
    EXPECT_EQ(picture.imageOrientation, ImageOrientation::OrientationUnknown);
    EXPECT_EQ(picture.content, Content::ContentStitched);
}

TEST(AnchorScanMetadata, AFailureInTheThirdPictureKeepsTheFirstTwo)
{
    json j = metadataJson();
    j["panoramaPictures"] = json::array({pictureJson(), pictureJson(), pictureJson(), pictureJson()});
    j["panoramaPictures"][1]["fileName"] = "second";
    j["panoramaPictures"][2]["content"] = 5;
    AnchorScanMetadata metadata;
    metadata.panoramaPictures.emplace_back().fileName = "before";
    EXPECT_EQ(failureOfReading(j, metadata).id, 302);
    EXPECT_EQ(metadata.endTime, 20);
    ASSERT_EQ(metadata.panoramaPictures.size(), 3U);
    EXPECT_EQ(metadata.panoramaPictures[0].fileName, "before");
    EXPECT_EQ(metadata.panoramaPictures[1].fileName, "pano_01.jpg");
    EXPECT_EQ(metadata.panoramaPictures[2].fileName, "second");
}

TEST(AnchorScanMetadata, DeeplyNestedTextIsRefusedAsWhatItIsAtItsTop)
{
    constexpr std::size_t depth = 5'000;
    json deep = json::parse(std::string(depth, '[') + std::string(depth, ']'));
    EXPECT_EQ(failureOfReading<AnchorScanMetadata>(deep).id, 304);
    json j = metadataJson();
    j["panoramaPictures"] = std::move(deep);
    EXPECT_EQ(failureOfReading<AnchorScanMetadata>(j).id, 304);
    j["startTime"] = std::move(j["panoramaPictures"]);
    EXPECT_EQ(failureOfReading<AnchorScanMetadata>(j).id, 302);
}

} // namespace oV::Roamscan
