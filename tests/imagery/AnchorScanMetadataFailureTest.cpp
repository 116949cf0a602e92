#include "tests/support/ScanMetadata.h"

#include <roamscan/imagery/AnchorScanMetadata.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace support;

/// The id of the exception that reading into the target ends with, and its text; 0 if there is none.
struct Failure
{
    int id = 0;
    std::string text;
};

/// Whether the text of the failure has the key in quotes.
bool names(Failure const& failure, char const* key)
{
    std::string quoted = "'";
    quoted.append(key).append("'");
    return failure.text.find(quoted) != std::string::npos;
}

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

} // namespace

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

TEST(AnchorScanMetadata, NonObjectIsATypeError304)
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

TEST(AnchorScanMetadata, IdThatIsNeitherNumberNorBooleanIsATypeError302)
{
    for (json const& value : nonNumbers) {
        Failure const failure = failureWith<AnchorScanMetadata>(metadataJson(), "id", value);
        EXPECT_EQ(failure.id, 302);
        EXPECT_NE(failure.text.find("type must be number, but is " + std::string(value.type_name())),
                  std::string::npos)
            << failure.text;
    }
}

TEST(AnchorScanMetadata, NonNumericVelocityAngleOrTimeIsATypeError302)
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

TEST(AnchorScanMetadata, BooleanIsNotAVelocityAngleOrTime)
{
    for (char const* const key : {"horizontalVelocity", "horizontalAngle", "startTime", "endTime"}) {
        EXPECT_EQ(failureWith<AnchorScanMetadata>(metadataJson(), key, true).id, 302) << key;
    }
    EXPECT_EQ(failureWith<Picture>(pictureJson(), "time", true).id, 302);
}

TEST(AnchorScanMetadata, NonNumericPictureTimeIsATypeError302)
{
    for (json const& value : nonNumbers) {
        EXPECT_EQ(failureWith<Picture>(pictureJson(), "time", value).id, 302) << value;
    }
}

TEST(AnchorScanMetadata, NonStringInAStringFieldIsATypeError302)
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

TEST(AnchorScanMetadata, NonStringOrientationIsATypeError302)
{
    for (json const& value : nonStrings) {
        EXPECT_EQ(failureWith<Picture>(pictureJson(), "imageOrientation", value).id, 302) << value;
    }
}

TEST(AnchorScanMetadata, NonStringContentIsATypeError302)
{
    for (json const& value : nonStrings) {
        EXPECT_EQ(failureWith<Picture>(pictureJson(), "content", value).id, 302) << value;
    }
}

TEST(AnchorScanMetadata, NonArrayPicturesAreATypeError302)
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

TEST(AnchorScanMetadata, NonObjectElementIsATypeError304)
{
    EXPECT_EQ(failureWith<AnchorScanMetadata>(metadataJson(), "panoramaPictures", json::array({5})).id, 304);
}

TEST(AnchorScanMetadata, ErrorInsideAPicturePassesThrough)
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
    // From the last key back, each bad one in turn is the first that is reported, whatever follows it.
    json j = metadataJson();
    j["panoramaPictures"] = 5;
    EXPECT_NE(failureOfReading<AnchorScanMetadata>(j).text.find("must be array"), std::string::npos);
    for (std::size_t i = metadataKeys.size(); i-- > 0;) {
        j.erase(metadataKeys[i]);
        EXPECT_TRUE(names(failureOfReading<AnchorScanMetadata>(j), metadataKeys[i]));
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
        EXPECT_TRUE(names(failureOfReading<Picture>(j), pictureKeys[i]));
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

TEST(AnchorScanMetadata, DeeplyNestedValueIsRefusedByItsTopLevelType)
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
