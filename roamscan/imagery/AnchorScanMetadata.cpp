#include <roamscan/imagery/AnchorScanMetadata.h>

#include <nlohmann/json.hpp>

#include <cmath>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace oV::Roamscan
{

namespace
{

using nlohmann::json;
using PanoramaPicture = AnchorScanMetadata::PanoramaPicture;
using Content = PanoramaPicture::Content;
using ImageOrientation = PanoramaPicture::ImageOrientation;

// The JSON library converts booleans to every integer type except its own, and a time must not be a boolean.
static_assert(std::is_same_v<int64, json::number_integer_t>);

/// The lowest 64 bits of a number rounded towards zero, in two's complement. A plain cast is undefined for
/// numbers out of range.
std::uint64_t wholePart(double number)
{
    if (!std::isfinite(number)) {
        return 0;
    }
    double const whole = std::fmod(std::trunc(number), 0x1p64);
    auto const magnitude = static_cast<std::uint64_t>(std::abs(whole));
    return whole < 0.0 ? std::uint64_t{0} - magnitude : magnitude;
}

template <typename Whole>
void readWhole(json const& value, Whole& target)
{
    if (value.is_number_float()) {
        target = static_cast<Whole>(wholePart(value.get<double>()));
    } else {
        value.get_to(target);
    }
}

/// Empty if the value has no text.
std::string_view textOf(ImageOrientation orientation)
{
    switch (orientation) {
    case ImageOrientation::OrientationUpright:
        return "upright";
    case ImageOrientation::OrientationUpToOuterSide:
        return "up_to_outer_side";
    default:
        return {};
    }
}

/// Empty if the value has no text.
std::string_view textOf(Content content)
{
    switch (content) {
    case Content::ContentStitched:
        return "stitched";
    case Content::ContentUnstitched:
        return "unstitched";
    default:
        return {};
    }
}

template <typename Enumeration>
void writeText(json& j, char const* key, Enumeration value)
{
    if (std::string_view const text = textOf(value); !text.empty()) {
        j[key] = std::string(text);
    }
}

/// The value, 1 or 2, of the string at the key; 0 for any other string and without the key.
template <typename Enumeration>
void readText(json const& j, char const* key, Enumeration& target)
{
    target = Enumeration{0};
    auto const found = j.find(key);
    if (found == j.end()) {
        return;
    }
    auto const text = found->get<std::string>();
    for (Enumeration const value : {Enumeration{1}, Enumeration{2}}) {
        if (text == textOf(value)) {
            target = value;
        }
    }
}

void appendPictures(json const& array, std::vector<PanoramaPicture>& pictures)
{
    if (!array.is_array()) {
        static_cast<void>(array.get<json::array_t>()); // throws
    }
    for (json const& element : array) {
        PanoramaPicture picture;
        from_json(element, picture);
        pictures.push_back(std::move(picture));
    }
}

} // namespace

void to_json(json& j, AnchorScanMetadata const& metadata)
{
    j = json::object({{"id", metadata.id},
                      {"horizontalVelocity", metadata.horizontalVelocity},
                      {"horizontalAngle", metadata.horizontalAngle},
                      {"startTime", metadata.startTime},
                      {"endTime", metadata.endTime}});
    if (!metadata.panoramaPictures.empty()) {
        j["panoramaPictures"] = metadata.panoramaPictures;
    }
}

void from_json(json const& j, AnchorScanMetadata& metadata)
{
    readWhole(j.at("id"), metadata.id);
    j.at("horizontalVelocity").get_to(metadata.horizontalVelocity);
    j.at("horizontalAngle").get_to(metadata.horizontalAngle);
    readWhole(j.at("startTime"), metadata.startTime);
    readWhole(j.at("endTime"), metadata.endTime);
    if (auto const found = j.find("panoramaPictures"); found != j.end()) {
        appendPictures(*found, metadata.panoramaPictures);
    }
}

void to_json(json& j, PanoramaPicture const& picture)
{
    j = json::object({{"fileName", picture.fileName},
                      {"camSerialNumber", picture.camSerialNumber},
                      {"camManufacturer", picture.camManufacturer},
                      {"camModel", picture.camModel},
                      {"camFirmwareVersion", picture.camFirmwareVersion},
                      {"time", picture.time}});
    writeText(j, "imageOrientation", picture.imageOrientation);
    writeText(j, "content", picture.content);
}

void from_json(json const& j, PanoramaPicture& picture)
{
    j.at("fileName").get_to(picture.fileName);
    j.at("camSerialNumber").get_to(picture.camSerialNumber);
    j.at("camManufacturer").get_to(picture.camManufacturer);
    j.at("camModel").get_to(picture.camModel);
    j.at("camFirmwareVersion").get_to(picture.camFirmwareVersion);
    readWhole(j.at("time"), picture.time);
    readText(j, "imageOrientation", picture.imageOrientation);
    readText(j, "content", picture.content);
}

} // namespace oV::Roamscan
