#include "tools/picture/TopView.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

/// A room of 8 m by 4 m with a door of 1 m in the middle of its northern wall; floor and ceiling; a walk
/// through it.
TopViewScene room()
{
    TopViewScene scene;
    for (int i = 0; i <= 800; ++i) {
        auto const x = 0.01F * static_cast<float>(i);
        for (int h = 0; h <= 28; ++h) {
            auto const z = 0.1F * static_cast<float>(h);
            scene.points.emplace_back(x, 0.0F, z);
            if (i <= 400) {
                scene.points.emplace_back(0.0F, x, z);
                scene.points.emplace_back(8.0F, x, z);
            }
            if (i < 350 || i > 450 || h > 21) {
                scene.points.emplace_back(x, 4.0F, z);
            }
        }
        for (int j = 0; j <= 40; ++j) {
            scene.points.emplace_back(x, 0.1F * static_cast<float>(j), 0.0F);
            scene.points.emplace_back(x, 0.1F * static_cast<float>(j), 2.8F);
        }
    }
    for (int i = 0; i <= 100; ++i) {
        scene.path.emplace_back(2.0F + 0.04F * static_cast<float>(i), 2.0F);
    }
    return scene;
}

/// Where a place of the room is on the picture: 8 m fill the long side but for its borders.
struct Pixel
{
    Pixel(double x, double y)
        : column(static_cast<int>(36.0 + x * 1128.0 / 8.0)),
          row(static_cast<int>(36.0 + (4.0 - y) * 1128.0 / 8.0))
    {}

    int column;
    int row;
};

/// From 0 to 1.
float brightnessAt(cv::Mat3b const& picture, int column, int row)
{
    cv::Vec3b const& pixel = picture(row, column);
    return static_cast<float>(pixel[0] + pixel[1] + pixel[2]) / (3.0F * 255.0F);
}

float brightness(cv::Mat3b const& picture, Pixel const& pixel)
{
    // The wall's line is three pixels wide; its middle may fall onto either side of a pixel's edge.
    float darkest = 1.0F;
    for (int dx = -1; dx <= 1; ++dx) {
        for (int dy = -1; dy <= 1; ++dy) {
            darkest = std::min(darkest, brightnessAt(picture, pixel.column + dx, pixel.row + dy));
        }
    }
    return darkest;
}

} // namespace

TEST(TopView, IsAsLongAsAPageAndKeepsTheAspect)
{
    cv::Mat3b const picture = drawTopView(room());
    EXPECT_EQ(picture.cols, 1200);
    EXPECT_EQ(picture.rows, 36 + 564 + 36 + 56);
}

TEST(TopView, WallsAreDarkAndDoorsAreOpen)
{
    cv::Mat3b const picture = drawTopView(room());
    EXPECT_LT(brightness(picture, {2.0, 0.0}), 0.4F);
    EXPECT_LT(brightness(picture, {0.0, 2.0}), 0.4F);
    EXPECT_LT(brightness(picture, {8.0, 2.0}), 0.4F);
    EXPECT_LT(brightness(picture, {3.0, 4.0}), 0.4F);
    EXPECT_GT(brightness(picture, {4.0, 4.0}), 0.7F) << "the wall above the door must not close it";
    EXPECT_GT(brightness(picture, {1.0, 1.0}), 0.7F) << "the floor is pale";
    EXPECT_LT(brightness(picture, {1.0, 1.0}), 0.95F) << "but not white";
    EXPECT_EQ(picture(5, 5), cv::Vec3b(255, 255, 255));
}

TEST(TopView, ThePathIsDrawnOverThePoints)
{
    cv::Mat3b const picture = drawTopView(room());
    Pixel const middle(4.0, 2.0);
    cv::Vec3b const path = picture(middle.row, middle.column);
    EXPECT_GT(path[2], 0.8 * 255);
    EXPECT_LT(path[0], 0.3 * 255);
    Pixel const start(2.0, 2.0);
    cv::Vec3b const green = picture(start.row, start.column);
    EXPECT_GT(green[1], std::max(green[0], green[2]));
    Pixel const end(6.0, 2.0);
    cv::Vec3b const red = picture(end.row, end.column);
    EXPECT_GT(red[2], std::max(red[0], red[1]));
}

TEST(TopView, ThePathIsAsThickAsAskedAndHasSmoothEdges)
{
    // 3.5 pixels around the edge between the rows 317 and 318.
    cv::Mat3b const picture = drawTopView(room());
    cv::Vec3b const orange(0x0C, 0x59, 0xE8);
    EXPECT_EQ(picture(317, 600), orange);
    EXPECT_EQ(picture(318, 600), orange);
    int partlyCovered = 0;
    for (int const row : {315, 316, 319, 320}) {
        auto const blue = picture(row, 600)[0];
        partlyCovered += blue > orange[0] + 20 && blue < 200 ? 1 : 0;
    }
    EXPECT_GE(partlyCovered, 1);
    for (int const row : {314, 321}) {
        EXPECT_GT(picture(row, 600)[0], 220) << row;
    }
}

TEST(TopView, TheStartIsLabelledOnItsLeftAndTheEndOnItsRight)
{
    cv::Mat3b const picture = drawTopView(room());
    // The strongest channel of each colour: green of the start's, red of the end's.
    auto const inkedPixels = [&](cv::Rect const& area, int channel) {
        auto const part = picture(area);
        return std::count_if(part.begin(), part.end(), [&](cv::Vec3b const& pixel) {
            return pixel[channel] > pixel[(channel + 1) % 3] + 40 &&
                   pixel[channel] > pixel[(channel + 2) % 3] + 40;
        });
    };
    Pixel const start(2.0, 2.0);
    Pixel const end(6.0, 2.0);
    cv::Rect const startLabel(start.column - 100, start.row - 15, 80, 30);
    cv::Rect const endLabel(end.column + 18, end.row - 15, 60, 30);
    EXPECT_GT(inkedPixels(startLabel, 1), 200);
    EXPECT_LT(inkedPixels(startLabel, 1), startLabel.area() / 2);
    EXPECT_GT(inkedPixels(endLabel, 2), 150);
    EXPECT_LT(inkedPixels(endLabel, 2), endLabel.area() / 2);
}

TEST(TopView, AFewStrayPointsDoNotChangeTheExtent)
{
    TopViewScene scene = room();
    scene.points.emplace_back(1e6F, 0.0F, 1.0F);
    scene.points.emplace_back(0.0F, -1e6F, 1.0F);
    EXPECT_EQ(drawTopView(scene).size(), drawTopView(room()).size());
}

TEST(TopView, TheScaleIsTrue)
{
    // 2 m at 141 pixels a metre, black on white, below the plan.
    cv::Mat3b const picture = drawTopView(room());
    int const row = picture.rows - 22;
    for (int x = 36; x < 36 + 282; ++x) {
        EXPECT_LT(brightnessAt(picture, x, row), 0.3F) << x;
    }
    EXPECT_GT(brightnessAt(picture, 36 - 2, row), 0.9F);
    EXPECT_GT(brightnessAt(picture, 36 + 282 + 1, row), 0.9F);
}

TEST(TopView, AnythingCanBeDrawn)
{
    EXPECT_EQ(drawTopView({}).cols, 1200);
    TopViewScene point;
    point.points.emplace_back(5.0F, 5.0F, 5.0F);
    point.path.emplace_back(5.0F, 5.0F);
    EXPECT_EQ(drawTopView(point).cols, 1200);
    TopViewScene thin;
    thin.path = {{0.0F, 0.0F}, {10'000.0F, 1.0F}};
    EXPECT_EQ(drawTopView(thin).rows, 300 + 56);
    TopViewScene tall;
    tall.path = {{0.0F, 0.0F}, {1.0F, 1000.0F}};
    EXPECT_EQ(drawTopView(tall).cols, 300);
    EXPECT_EQ(drawTopView(tall).rows, 1200 + 56);
    TopViewScene huge;
    huge.path = {{-3e38F, -3e38F}, {3e38F, 3e38F}};
    EXPECT_EQ(drawTopView(huge).cols, 1200);
}
