/// @file
/// Stores a wide panorama as tiles and reads it back.

#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/failures/VisibleException.h>
#include <roamscan/imagery/LargeImageSerialization.h>

#include <opencv2/core.hpp>

#include <cstdio>

namespace
{

// An image of 2500 x 400 pixels; each colour depends on the position.
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
    namespace images = oV::Roamscan::LargeImageSerialization;

    // The file itself is not written: the tiles are panorama/0.png, panorama/1.png and panorama/2.png.
    auto const file = Bv_1_1::File::fromPath(L"panorama.png");

    cv::Mat const panorama = makePanorama();
    try {
        images::serializeImage(panorama, file);
        cv::Mat const back = images::readImage(file); // decodes the tiles in parallel
        bool const same = back.size() == panorama.size() && cv::norm(back, panorama, cv::NORM_INF) == 0.0;
        std::printf("read %d x %d pixels, %s\n", back.cols, back.rows, same ? "unchanged" : "changed");
        return same ? 0 : 1;
    } catch (oV::VisibleException const& failure) { // a tile cannot be written or read
        std::printf("%s\n", failure.getDesc().stringAnsi());
    } catch (oV::InternalErrorException const& failure) { // there are no tiles, or they do not match
        std::printf("%s\n", failure.getDesc().stringAnsi());
    }
    return 1;
}
