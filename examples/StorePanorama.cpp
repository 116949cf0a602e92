/// @file
/// Keeps a panorama that is too wide for one file, and gets it back.

#include "TemporaryFolder.h"

#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/failures/VisibleException.h>
#include <roamscan/imagery/LargeImageSerialization.h>

#include <opencv2/core.hpp>

#include <cstdio>

namespace
{

// A picture 2500 pixels wide whose colour says where one is in it.
cv::Mat makePanorama()
{
    cv::Mat panorama(400, 2500, CV_8UC3);
    for (int row = 0; row < panorama.rows; ++row) {
        for (int column = 0; column < panorama.cols; ++column) {
            panorama.at<cv::Vec3b>(row, column) = {static_cast<unsigned char>(column / 10),
                                                   static_cast<unsigned char>(row / 2),
                                                   static_cast<unsigned char>((row + column) % 256)};
        }
    }
    return panorama;
}

} // namespace

int main()
{
    namespace pictures = oV::Roamscan::LargeImageSerialization;

    // The file gives the place: its tiles are 0.png, 1.png and 2.png in the folder "panorama" beside it.
    TemporaryFolder const folder;
    auto const file = Bv_1_1::File::fromPath(folder.file("panorama.png").wstring().c_str());

    cv::Mat const panorama = makePanorama();
    try {
        pictures::serializeImage(panorama, file);
        cv::Mat const back = pictures::readImage(file); // decodes the tiles in parallel
        bool const same = back.size() == panorama.size() && cv::norm(back, panorama, cv::NORM_INF) == 0.0;
        std::printf("%d x %d pixels came back %s\n", back.cols, back.rows, same ? "as they were" : "changed");
        return same ? 0 : 1;
    } catch (oV::VisibleException const& failure) { // a tile could not be written or read
        std::printf("%s\n", failure.getDesc().stringAnsi());
    } catch (oV::InternalErrorException const& failure) { // no tiles, or tiles that do not match
        std::printf("%s\n", failure.getDesc().stringAnsi());
    }
    return 1;
}
