#include "tools/clouds/LasFormat.h"

#include <array>

namespace oV::Roamscan::tool
{

namespace
{

using enum FieldType;

constexpr std::array common{LasDimension{"intensity", UInt16, 12}};

constexpr std::array before6{LasDimension{"return_number", UInt8, 14, 0, 3},
                             LasDimension{"number_of_returns", UInt8, 14, 3, 3},
                             LasDimension{"scan_direction_flag", UInt8, 14, 6, 1},
                             LasDimension{"edge_of_flight_line", UInt8, 14, 7, 1},
                             LasDimension{"classification", UInt8, 15, 0, 5},
                             LasDimension{"synthetic", UInt8, 15, 5, 1},
                             LasDimension{"key_point", UInt8, 15, 6, 1},
                             LasDimension{"withheld", UInt8, 15, 7, 1},
                             LasDimension{"scan_angle_rank", Int8, 16},
                             LasDimension{"user_data", UInt8, 17},
                             LasDimension{"point_source_id", UInt16, 18}};

constexpr std::array from6{LasDimension{"return_number", UInt8, 14, 0, 4},
                           LasDimension{"number_of_returns", UInt8, 14, 4, 4},
                           LasDimension{"synthetic", UInt8, 15, 0, 1},
                           LasDimension{"key_point", UInt8, 15, 1, 1},
                           LasDimension{"withheld", UInt8, 15, 2, 1},
                           LasDimension{"overlap", UInt8, 15, 3, 1},
                           LasDimension{"scanner_channel", UInt8, 15, 4, 2},
                           LasDimension{"scan_direction_flag", UInt8, 15, 6, 1},
                           LasDimension{"edge_of_flight_line", UInt8, 15, 7, 1},
                           LasDimension{"classification", UInt8, 16},
                           LasDimension{"user_data", UInt8, 17},
                           LasDimension{"scan_angle", Int16, 18},
                           LasDimension{"point_source_id", UInt16, 20},
                           LasDimension{"gps_time", Double, 22}};

/// Where the optional parts of a record begin; 0 for a part that the format does not have.
struct Format
{
    std::size_t size = 0;
    std::size_t time = 0;
    std::size_t colour = 0;
    std::size_t infrared = 0;
    std::size_t waveform = 0;
};

constexpr std::array formats{Format{20, 0, 0, 0, 0},
                             Format{28, 20, 0, 0, 0},
                             Format{26, 0, 20, 0, 0},
                             Format{34, 20, 28, 0, 0},
                             Format{57, 20, 0, 0, 28},
                             Format{63, 20, 28, 0, 34},
                             Format{30, 22, 0, 0, 0},
                             Format{36, 22, 30, 0, 0},
                             Format{38, 22, 30, 36, 0},
                             Format{59, 22, 0, 0, 30},
                             Format{67, 22, 30, 36, 38}};

} // namespace

std::size_t lasRecordSize(unsigned format)
{
    return formats.at(format).size;
}

std::vector<LasDimension> lasDimensions(unsigned format)
{
    Format const& parts = formats.at(format);
    std::vector<LasDimension> dimensions(common.begin(), common.end());
    if (format >= 6) {
        dimensions.insert(dimensions.end(), from6.begin(), from6.end());
    } else {
        dimensions.insert(dimensions.end(), before6.begin(), before6.end());
        if (parts.time != 0) {
            dimensions.push_back({"gps_time", Double, parts.time});
        }
    }
    if (parts.colour != 0) {
        dimensions.push_back({"red", UInt16, parts.colour});
        dimensions.push_back({"green", UInt16, parts.colour + 2});
        dimensions.push_back({"blue", UInt16, parts.colour + 4});
    }
    if (parts.infrared != 0) {
        dimensions.push_back({"nir", UInt16, parts.infrared});
    }
    if (parts.waveform != 0) {
        dimensions.push_back({"wave_packet_descriptor_index", UInt8, parts.waveform});
        dimensions.push_back({"wave_packet_offset", UInt64, parts.waveform + 1});
        dimensions.push_back({"wave_packet_size", UInt32, parts.waveform + 9});
        dimensions.push_back({"return_point_location", Float, parts.waveform + 13});
        dimensions.push_back({"x_t", Float, parts.waveform + 17});
        dimensions.push_back({"y_t", Float, parts.waveform + 21});
        dimensions.push_back({"z_t", Float, parts.waveform + 25});
    }
    return dimensions;
}

} // namespace oV::Roamscan::tool
