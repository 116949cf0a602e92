/// @file
/// Reads any bytes as the JSON text of an anchor scan's metadata and of one picture. They are read, or
/// refused with the JSON library's exception. A value that was read is unchanged after a round trip through
/// JSON.

#include "StreamInput.h"

#include <roamscan/imagery/AnchorScanMetadata.h>

#include <nlohmann/json.hpp>

#include <bit>
#include <cstddef>
#include <cstdint>

namespace
{

using fuzz::require;
using nlohmann::json;
using oV::Roamscan::AnchorScanMetadata;
using Picture = AnchorScanMetadata::PanoramaPicture;

/// JSON numbers are finite, so bits differ only for different values and for the sign of zero.
bool sameBits(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool same(Picture const& a, Picture const& b)
{
    return a.fileName == b.fileName && a.camSerialNumber == b.camSerialNumber && a.content == b.content &&
           a.imageOrientation == b.imageOrientation && a.camManufacturer == b.camManufacturer &&
           a.camModel == b.camModel && a.camFirmwareVersion == b.camFirmwareVersion && a.time == b.time;
}

bool same(AnchorScanMetadata const& a, AnchorScanMetadata const& b)
{
    if (a.panoramaPictures.size() != b.panoramaPictures.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.panoramaPictures.size(); ++i) {
        if (!same(a.panoramaPictures[i], b.panoramaPictures[i])) {
            return false;
        }
    }
    return a.id == b.id && sameBits(a.horizontalVelocity, b.horizontalVelocity) &&
           sameBits(a.horizontalAngle, b.horizontalAngle) && a.startTime == b.startTime &&
           a.endTime == b.endTime;
}

template <typename Value>
void readAndReturn(json const& document)
{
    Value value;
    try {
        document.get_to(value);
    } catch (json::exception const& refused) {
        require(refused.id == 302 || refused.id == 304 || refused.id == 403, "the exception is one of three");
        return;
    }
    json const written = value;
    Value again;
    written.get_to(again);
    require(same(value, again), "a value is unchanged after a round trip through a JSON value");
    Value fromText;
    json::parse(written.dump()).get_to(fromText);
    require(same(value, fromText), "a value is unchanged after a round trip through JSON text");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    json const document = json::parse(data, data + size, nullptr, false);
    readAndReturn<AnchorScanMetadata>(document);
    readAndReturn<Picture>(document);
    return 0;
}
