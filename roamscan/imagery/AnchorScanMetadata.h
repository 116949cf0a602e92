#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/IntegerTypes.h>

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace oV::Roamscan
{

/// One anchor scan: its identity, its horizontal rotation, its time span, and the panorama pictures that were
/// taken with it.
///
/// A plain value with a form in JSON, which `nlohmann::json metadata = value` and `metadata.get_to(value)`
/// find in this namespace. What its numbers mean, their units and where their time counts from, is settled by
/// those who write it; the library only carries them. Const operations may run concurrently on one value,
/// writing needs the caller's own exclusion.
///
/// | field                | key                  | types accepted on reading                              |
/// |----------------------|----------------------|--------------------------------------------------------|
/// | `id`                 | "id"                 | number or boolean; its whole part, the lowest 32 bits  |
/// | `horizontalVelocity` | "horizontalVelocity" | number                                                 |
/// | `horizontalAngle`    | "horizontalAngle"    | number                                                 |
/// | `startTime`          | "startTime"          | number; its whole part, the lowest 64 bits             |
/// | `endTime`            | "endTime"            | number; its whole part, the lowest 64 bits             |
/// | `panoramaPictures`   | "panoramaPictures"   | array of pictures; the key may be absent               |
///
/// The whole part of a number is what is left of it towards zero; one that is not finite gives 0.
struct ROAMSCAN_EXPORT AnchorScanMetadata
{
    /// One panorama picture of an anchor scan.
    ///
    /// | field                | key                  | types accepted on reading                    |
    /// |----------------------|----------------------|----------------------------------------------|
    /// | `fileName`           | "fileName"           | string                                       |
    /// | `camSerialNumber`    | "camSerialNumber"    | string                                       |
    /// | `content`            | "content"            | string; the key may be absent                |
    /// | `imageOrientation`   | "imageOrientation"   | string; the key may be absent                |
    /// | `camManufacturer`    | "camManufacturer"    | string                                       |
    /// | `camModel`           | "camModel"           | string                                       |
    /// | `camFirmwareVersion` | "camFirmwareVersion" | string                                       |
    /// | `time`               | "time"               | number; its whole part, the lowest 64 bits   |
    ///
    /// Strings go to and from JSON as they stand. JSON values take any bytes, but JSON text is UTF-8:
    /// `dump()` of other bytes throws the JSON library's own `type_error` with id 316.
    struct ROAMSCAN_EXPORT PanoramaPicture
    {
        /// What the picture shows.
        enum class Content : std::uint32_t
        {
            ContentUnknown = 0,   ///< Without a text: the key is left out.
            ContentStitched = 1,  ///< "stitched": one panorama, put together from single pictures.
            ContentUnstitched = 2 ///< "unstitched": the single pictures as they were taken.
        };

        /// How the picture stands.
        enum class ImageOrientation : std::uint32_t
        {
            OrientationUnknown = 0,      ///< Without a text: the key is left out.
            OrientationUpright = 1,      ///< "upright"
            OrientationUpToOuterSide = 2 ///< "up_to_outer_side"
        };

        std::string fileName;                                                     ///< As the writer named it.
        std::string camSerialNumber;                                              ///< Of the camera.
        Content content = Content::ContentUnknown;                                ///< What it shows.
        ImageOrientation imageOrientation = ImageOrientation::OrientationUnknown; ///< How it stands.
        std::string camManufacturer;                                              ///< Of the camera.
        std::string camModel;                                                     ///< Of the camera.
        std::string camFirmwareVersion;                                           ///< Of the camera.
        int64 time = 0; ///< When it was taken, on the writer's time axis.
    };

    std::uint32_t id = 0;                          ///< Identity of the scan.
    double horizontalVelocity = 0.0;               ///< Of the horizontal rotation, in the writer's unit.
    double horizontalAngle = 0.0;                  ///< Of the horizontal rotation, in the writer's unit.
    int64 startTime = 0;                           ///< On the writer's time axis.
    int64 endTime = 0;                             ///< On the writer's time axis.
    std::vector<PanoramaPicture> panoramaPictures; ///< In the writer's order.
};

/// Makes `j` an object with the first five keys, and with "panoramaPictures" if there is a picture: callers
/// may rely on an empty vector leaving the key out.
///
/// A velocity or an angle that is not finite stays so in the JSON value, but JSON text has no form for it:
/// `dump()` writes null, which cannot be read back.
ROAMSCAN_EXPORT void to_json(nlohmann::json& j, AnchorScanMetadata const& metadata);

/// Reads the first five keys in the order of the fields, then the pictures. Callers may rely on these:
/// - Pictures are appended to those that are there; without the key nothing happens to them.
/// - On an exception, what was read before it stays read, up to the last whole picture, and the rest is as it
///   was. The first key in that order that is missing or bad is the one that is reported.
/// @throws nlohmann::json::type_error with id 304 if `j` is not an object, with id 302 if a value has the
///         wrong type
/// @throws nlohmann::json::out_of_range with id 403 if a key is missing
ROAMSCAN_EXPORT void from_json(nlohmann::json const& j, AnchorScanMetadata& metadata);

/// Makes `j` an object with the five other strings and the time, and with "imageOrientation" and "content" if
/// their value has a text.
ROAMSCAN_EXPORT void to_json(nlohmann::json& j, AnchorScanMetadata::PanoramaPicture const& picture);

/// Reads "fileName", "camSerialNumber", "camManufacturer", "camModel", "camFirmwareVersion" and "time", then
/// "imageOrientation", then "content". Callers may rely on these:
/// - The last two become 0 if the key is absent, and also, without complaint, if the text is not exactly one
///   of those above. Such a text is lost when the picture is written again.
/// - On an exception, what was read before it stays read, and the rest is as it was, save that the one of the
///   last two whose value had the wrong type is 0.
/// @throws nlohmann::json::type_error with id 304 if `j` is not an object, with id 302 if a value has the
///         wrong type
/// @throws nlohmann::json::out_of_range with id 403 if a key is missing
ROAMSCAN_EXPORT void from_json(nlohmann::json const& j, AnchorScanMetadata::PanoramaPicture& picture);

} // namespace oV::Roamscan
