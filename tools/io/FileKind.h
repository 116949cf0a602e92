#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace oV::Roamscan::tool
{

/// What a file contains.
enum class FileKind : std::uint8_t
{
    Unknown,
    RecordingStream, ///< A trajectory or a sensor stream.
    PlyCloud,
    PcdCloud,
    LasCloud,
    TumPoses,
    EurocPoses,
    KittiPoses,
    CsvPoses,
    Picture,
    Gltf,
    Building,     ///< The true surfaces that `roamscan simulate` writes.
    ScanMetadata, ///< The metadata of an anchor scan.
    JsonText,
    Compressed,
    Recording ///< A bag of another recording system.
};

/// Recognises a kind by the first bytes of a file; a few hundred are enough.
[[nodiscard]] FileKind kindOf(std::string_view firstBytes);

/// Recognises the kind of a file, or Unknown if it is not a regular file or cannot be read.
[[nodiscard]] FileKind kindOfFile(std::filesystem::path const& path);

/// "a PLY cloud; see roamscan place", for messages. Empty if unknown.
[[nodiscard]] std::string describe(FileKind kind);

/// "this is a PLY cloud; see roamscan place" if the file is of a known kind that is not `expected`; otherwise
/// `text`.
[[nodiscard]] std::string
whatItIsOr(std::filesystem::path const& path, FileKind expected, std::string const& text);

} // namespace oV::Roamscan::tool
