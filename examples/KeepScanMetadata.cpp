/// @file
/// Writes the metadata of an anchor scan to a JSON file and reads it back.

#include <roamscan/imagery/AnchorScanMetadata.h>

#include <nlohmann/json.hpp>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>

using nlohmann::json;
using oV::Roamscan::AnchorScanMetadata;

namespace
{

AnchorScanMetadata scanWithTwoPictures()
{
    using Picture = AnchorScanMetadata::PanoramaPicture;

    AnchorScanMetadata scan;
    scan.id = 3;
    scan.horizontalVelocity = 0.5;
    scan.horizontalAngle = 6.28;
    scan.startTime = 1'000'000'000;
    scan.endTime = 2'256'000'000;
    for (std::string const name : {"left.jpg", "right.jpg"}) {
        Picture& picture = scan.panoramaPictures.emplace_back();
        picture.fileName = name;
        picture.content = Picture::Content::ContentUnstitched;
        picture.imageOrientation = Picture::ImageOrientation::OrientationUpright;
        picture.time = scan.startTime;
    }
    return scan;
}

void write(AnchorScanMetadata const& scan, std::filesystem::path const& file)
{
    std::ofstream stream(file);
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    stream << json(scan).dump(2) << '\n';
    stream.close();
}

/// @throws nlohmann::json::exception if the file does not hold JSON or a value has the wrong type
AnchorScanMetadata read(std::filesystem::path const& file)
{
    std::ifstream stream(file);
    AnchorScanMetadata scan; // must be new: pictures are appended to existing ones
    json::parse(stream).get_to(scan);
    return scan;
}

} // namespace

int main()
{
    try {
        std::filesystem::path const file = "scan.json";
        write(scanWithTwoPictures(), file);
        AnchorScanMetadata const scan = read(file);
        std::printf("scan %u with %zu pictures:", scan.id, scan.panoramaPictures.size());
        for (auto const& picture : scan.panoramaPictures) {
            std::printf(" %s", picture.fileName.c_str());
        }
        std::printf("\n");
        return json(scan) == json(scanWithTwoPictures()) ? 0 : 1;
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
