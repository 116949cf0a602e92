#include "tools/io/FileKind.h"

#include "tools/io/NumberText.h"

#include <roamscan/frame/platform/LittleEndian.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <system_error>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

using namespace std::string_view_literals;

struct Signature
{
    std::string_view start;
    FileKind kind;
};

constexpr std::array signatures{
    Signature{"ply\n"sv, FileKind::PlyCloud},
    Signature{"ply\r"sv, FileKind::PlyCloud},
    Signature{"ply "sv, FileKind::PlyCloud},
    Signature{"# .PCD"sv, FileKind::PcdCloud},
    Signature{"VERSION 0.7"sv, FileKind::PcdCloud},
    Signature{"LASF"sv, FileKind::LasCloud},
    Signature{"time,x,y,z,qw,qx,qy,qz"sv, FileKind::CsvPoses},
    Signature{"\x89PNG\r\n"sv, FileKind::Picture},
    Signature{"\xFF\xD8\xFF"sv, FileKind::Picture},
    Signature{"II*\0"sv, FileKind::Picture},
    Signature{"MM\0*"sv, FileKind::Picture},
    Signature{"glTF"sv, FileKind::Gltf},
    Signature{"\x1F\x8B\x08"sv, FileKind::Compressed},
    Signature{"PK\x03\x04"sv, FileKind::Compressed},
    Signature{"BZh"sv, FileKind::Compressed},
    Signature{"\xFD\x37zXZ\0"sv, FileKind::Compressed},
    Signature{"\x28\xB5\x2F\xFD"sv, FileKind::Compressed},
    Signature{"#ROSBAG"sv, FileKind::Recording},
    Signature{"\x89MCAP"sv, FileKind::Recording},
};

/// A length prefix that leaves room for the root table of a FlatBuffers buffer.
bool startsLikeAStream(std::string_view bytes)
{
    std::array<char, 8> prefix{};
    std::array<char, 4> root{};
    if (bytes.size() < prefix.size() + root.size()) {
        return false;
    }
    std::copy_n(bytes.begin(), prefix.size(), prefix.begin());
    std::copy_n(bytes.begin() + prefix.size(), root.size(), root.begin());
    std::uint64_t const length = fromLittleEndian(prefix);
    std::uint64_t const offset = fromLittleEndian(root);
    return length < (std::uint64_t{1} << 31U) && offset >= root.size() && offset < length;
}

FileKind kindOfJson(std::string_view text)
{
    if (text.find("\"roamscan building\"") != std::string_view::npos) {
        return FileKind::Building;
    }
    if (text.find("\"horizontalAngle\"") != std::string_view::npos) {
        return FileKind::ScanMetadata;
    }
    bool const isGltf = text.find("\"asset\"") != std::string_view::npos;
    return isGltf ? FileKind::Gltf : FileKind::JsonText;
}

/// By the first line that is neither blank nor a comment.
FileKind kindOfPoses(std::string_view text)
{
    while (!text.empty()) {
        std::size_t const end = std::min(text.find_first_of("\r\n"), text.size());
        std::string_view const line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.front() == '#') {
            continue;
        }
        auto const areNumbers = [](std::vector<std::string_view> const& columns) {
            return std::ranges::all_of(columns, [](auto column) { return parseNumber(column).has_value(); });
        };
        auto const columns = columnsOf(line);
        if ((columns.size() == 8 || columns.size() == 12) && areNumbers(columns)) {
            return columns.size() == 8 ? FileKind::TumPoses : FileKind::KittiPoses;
        }
        auto const values = commaColumnsOf(line);
        bool const isEuroc = values.size() >= 8 && parseInteger(values[0]) && areNumbers(values);
        return isEuroc ? FileKind::EurocPoses : FileKind::Unknown;
    }
    return FileKind::Unknown;
}

} // namespace

FileKind kindOf(std::string_view firstBytes)
{
    for (Signature const& signature : signatures) {
        if (firstBytes.starts_with(signature.start)) {
            return signature.kind;
        }
    }
    if (startsLikeAStream(firstBytes)) {
        return FileKind::RecordingStream;
    }
    std::size_t const first = firstBytes.find_first_not_of(" \t\r\n");
    if (first != std::string_view::npos && (firstBytes[first] == '{' || firstBytes[first] == '[')) {
        return kindOfJson(firstBytes);
    }
    return kindOfPoses(firstBytes);
}

FileKind kindOfFile(std::filesystem::path const& path)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) {
        return FileKind::Unknown; // reading from a pipe would take what comes first
    }
    std::array<char, 4096> bytes{};
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), bytes.size());
    return kindOf({bytes.data(), static_cast<std::size_t>(file.gcount())});
}

std::string describe(FileKind kind)
{
    switch (kind) {
    case FileKind::RecordingStream:
        return "a trajectory or sensor stream; see roamscan info";
    case FileKind::PlyCloud:
        return "a PLY cloud; see roamscan place";
    case FileKind::PcdCloud:
        return "a PCD cloud; see roamscan place";
    case FileKind::LasCloud:
        return "a LAS cloud; see roamscan place";
    case FileKind::TumPoses:
        return "a text of TUM poses; see roamscan import --format tum";
    case FileKind::EurocPoses:
        return "a text of EuRoC poses; see roamscan import --format euroc";
    case FileKind::KittiPoses:
        return "a text of KITTI poses; see roamscan import --format kitti";
    case FileKind::CsvPoses:
        return "a CSV text of poses; see roamscan import --format csv";
    case FileKind::Picture:
        return "a picture; see roamscan panorama and roamscan exif";
    case FileKind::Gltf:
        return "a glTF scene, as roamscan line writes it";
    case FileKind::Building:
        return "a building; see roamscan place --building";
    case FileKind::ScanMetadata:
        return "the metadata of an anchor scan, as roamscan simulate writes it";
    case FileKind::JsonText:
        return "a JSON text";
    case FileKind::Compressed:
        return "a compressed file; decompress it first";
    case FileKind::Recording:
        return "a bag of recorded messages; export its poses as a text and see roamscan import";
    case FileKind::Unknown:
        break;
    }
    return {};
}

std::string whatItIsOr(std::filesystem::path const& path, FileKind expected, std::string const& text)
{
    FileKind const kind = kindOfFile(path);
    return kind == FileKind::Unknown || kind == expected ? text : "this is " + describe(kind);
}

} // namespace oV::Roamscan::tool
