#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/IntegerTypes.h>

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace oV::Roamscan
{

/// The metadata of one anchor scan: its id, its horizontal rotation, its time span and its panorama pictures.
///
/// Converts to and from JSON with `nlohmann::json json = value` and `json.get_to(value)`. The writing
/// software defines the units of the numbers and the epoch of the times; this library does not interpret
/// them.
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
/// Whole parts are rounded towards zero. A number that is not finite gives 0.
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
    /// Strings are converted without checking their encoding. JSON text is UTF-8: `dump()` throws
    /// nlohmann::json::type_error with id 316 for other bytes.
    struct ROAMSCAN_EXPORT PanoramaPicture
    {
        /// What the picture shows.
        enum class Content : std::uint32_t
        {
            ContentUnknown = 0,   ///< The key is left out.
            ContentStitched = 1,  ///< "stitched": one panorama, composed of single pictures.
            ContentUnstitched = 2 ///< "unstitched": the single pictures as they were taken.
        };

        /// Which way the picture is turned.
        enum class ImageOrientation : std::uint32_t
        {
            OrientationUnknown = 0,      ///< The key is left out.
            OrientationUpright = 1,      ///< "upright"
            OrientationUpToOuterSide = 2 ///< "up_to_outer_side"
        };

        std::string fileName;                      ///< As the writing software named it.
        std::string camSerialNumber;               ///< Of the camera.
        Content content = Content::ContentUnknown; ///< What it shows.
        ImageOrientation imageOrientation = ImageOrientation::OrientationUnknown; ///< Which way it is turned.
        std::string camManufacturer;                                              ///< Of the camera.
        std::string camModel;                                                     ///< Of the camera.
        std::string camFirmwareVersion;                                           ///< Of the camera.
        int64 time = 0; ///< When it was taken, on the writer's time axis.
    };

    std::uint32_t id = 0;                          ///< Identifier of the scan.
    double horizontalVelocity = 0.0;               ///< Of the horizontal rotation, in the writer's unit.
    double horizontalAngle = 0.0;                  ///< Of the horizontal rotation, in the writer's unit.
    int64 startTime = 0;                           ///< On the writer's time axis.
    int64 endTime = 0;                             ///< On the writer's time axis.
    std::vector<PanoramaPicture> panoramaPictures; ///< In the writer's order.
};

/// Assigns to `j` an object with the keys of the table.
/// @note The key "panoramaPictures" is left out if there is no picture.
/// @warning JSON text cannot represent a velocity or an angle that is not finite: `dump()` writes null, which
/// cannot be read back.
ROAMSCAN_EXPORT void to_json(nlohmann::json& j, AnchorScanMetadata const& metadata);

/// Reads the keys in the order of the table.
/// @warning The pictures read are appended to those already in `metadata`.
/// @note If an exception is thrown, the fields and whole pictures before the reported key have been read, and
/// the others are unchanged.
/// @throws nlohmann::json::type_error with id 304 if `j` is not an object, with id 302 if a value has the
///         wrong type
/// @throws nlohmann::json::out_of_range with id 403 if a key is missing
ROAMSCAN_EXPORT void from_json(nlohmann::json const& j, AnchorScanMetadata& metadata);

/// Assigns to `j` an object with the keys of the table.
/// @note "content" and "imageOrientation" are left out if their value has no string.
ROAMSCAN_EXPORT void to_json(nlohmann::json& j, AnchorScanMetadata::PanoramaPicture const& picture);

/// Reads "fileName", "camSerialNumber", "camManufacturer", "camModel", "camFirmwareVersion", "time",
/// "imageOrientation" and "content", in this order.
/// @warning "imageOrientation" and "content" are set to 0 if the key is absent, or if its string is unknown.
/// An unknown string is therefore lost when the picture is written again.
/// @note If an exception is thrown, the fields before the reported key have been read, and the others are
/// unchanged. If it was thrown for "imageOrientation" or "content", that field is 0.
/// @throws nlohmann::json::type_error with id 304 if `j` is not an object, with id 302 if a value has the
///         wrong type
/// @throws nlohmann::json::out_of_range with id 403 if a key is missing
ROAMSCAN_EXPORT void from_json(nlohmann::json const& j, AnchorScanMetadata::PanoramaPicture& picture);

} // namespace oV::Roamscan
