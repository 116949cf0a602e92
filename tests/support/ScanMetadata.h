#pragma once

#include <roamscan/imagery/AnchorScanMetadata.h>

#include <nlohmann/json.hpp>

#include <string>

/// Metadata of an anchor scan, as values and as JSON.
namespace support
{

using nlohmann::json;
using oV::Roamscan::AnchorScanMetadata;
using Picture = AnchorScanMetadata::PanoramaPicture;
using Content = Picture::Content;
using ImageOrientation = Picture::ImageOrientation;

// The fields in the order of their declaration, by aggregate initialisation.
inline Picture fullPicture()
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

inline AnchorScanMetadata fullMetadata()
{
    return {4'000'000'000U, 0.5, 6.25, -100, 9'223'372'036'854'775'807, {fullPicture()}};
}

inline char const* const fullPictureText =
    R"({"camFirmwareVersion":"1.2.3","camManufacturer":"Maker","camModel":"Model 7",)"
    R"("camSerialNumber":"0042","content":"stitched","fileName":"pano_01.jpg",)"
    R"("imageOrientation":"up_to_outer_side","time":-5})";

inline std::string fullText()
{
    return R"({"endTime":9223372036854775807,"horizontalAngle":6.25,"horizontalVelocity":0.5,"id":4000000000,)"
           R"("panoramaPictures":[)" +
           std::string(fullPictureText) + R"(],"startTime":-100})";
}

inline json pictureJson()
{
    return json::parse(fullPictureText);
}

/// Without pictures.
inline json metadataJson()
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

/// The metadata read from a document in which one key has another value.
inline AnchorScanMetadata metadataWith(char const* key, json const& value)
{
    json j = metadataJson();
    j[key] = value;
    return readFrom<AnchorScanMetadata>(j);
}

inline Picture pictureWith(char const* key, json const& value)
{
    json j = pictureJson();
    j[key] = value;
    return readFrom<Picture>(j);
}

/// The members of a picture that differ from the defaults, in reading order.
inline std::string changedIn(Picture const& picture)
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
inline std::string changedIn(AnchorScanMetadata const& metadata)
{
    std::string changed;
    changed += metadata.id == 0 ? "" : "id ";
    changed += metadata.horizontalVelocity == 0.0 ? "" : "horizontalVelocity ";
    changed += metadata.horizontalAngle == 0.0 ? "" : "horizontalAngle ";
    changed += metadata.startTime == 0 ? "" : "startTime ";
    changed += metadata.endTime == 0 ? "" : "endTime ";
    return changed;
}

} // namespace support
