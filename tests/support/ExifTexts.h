#pragma once

#include <roamscan/imagery/ExifReader.h>

#include <string>
#include <tuple>

namespace support
{

/// All members of the data.
inline auto textsOf(oV::Roamscan::PanoramaImageData::ExifData const& data)
{
    return std::tuple(data.dateTime, data.manufacturer, data.model, data.valid);
}

/// Whether the data is as constructed.
inline bool isDefault(oV::Roamscan::PanoramaImageData::ExifData const& data)
{
    return textsOf(data) == textsOf({});
}

/// Whether the data is that of the camera whose block the tests write.
inline bool isCamera(oV::Roamscan::PanoramaImageData::ExifData const& data)
{
    using namespace std::string_literals;
    return textsOf(data) == std::tuple("2008:07:31 16:49:10\0"s, "ACME\0"s, "X100-S\0"s, true);
}

} // namespace support
