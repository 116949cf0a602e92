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

float brightness(Canvas const& canvas, Pixel const& pixel)
{
    // The wall's line is three pixels wide; its middle may fall onto either side of a pixel's edge.
    float darkest = 1.0F;
    for (int dx = -1; dx <= 1; ++dx) {
        for (int dy = -1; dy <= 1; ++dy) {
            darkest = std::min(darkest, canvas.at(pixel.column + dx, pixel.row + dy).mean());
        }
    }
    return darkest;
}

} // namespace

TEST(TopView, IsAsLongAsAPageAndKeepsTheAspect)
{
    Canvas const canvas = drawTopView(room());
    EXPECT_EQ(canvas.width(), 1200);
    EXPECT_EQ(canvas.height(), 36 + 564 + 36 + 56);
}

TEST(TopView, WallsAreDarkAndDoorsAreOpen)
{
    Canvas const canvas = drawTopView(room());
    EXPECT_LT(brightness(canvas, {2.0, 0.0}), 0.4F);
    EXPECT_LT(brightness(canvas, {0.0, 2.0}), 0.4F);
    EXPECT_LT(brightness(canvas, {8.0, 2.0}), 0.4F);
    EXPECT_LT(brightness(canvas, {3.0, 4.0}), 0.4F);
    EXPECT_GT(brightness(canvas, {4.0, 4.0}), 0.7F) << "the wall above the door must not close it";
    EXPECT_GT(brightness(canvas, {1.0, 1.0}), 0.7F) << "the floor is pale";
    EXPECT_LT(brightness(canvas, {1.0, 1.0}), 0.95F) << "but not white";
    EXPECT_EQ(canvas.at(5, 5), colourOf(0xFFFFFF));
}

TEST(TopView, ThePathLiesOnTop)
{
    Canvas const canvas = drawTopView(room());
    Pixel const middle(4.0, 2.0);
    Colour const path = canvas.at(middle.column, middle.row);
    EXPECT_GT(path.x(), 0.8F);
    EXPECT_LT(path.z(), 0.3F);
    Pixel const start(2.0, 2.0);
    Colour const green = canvas.at(start.column, start.row);
    EXPECT_GT(green.y(), std::max(green.x(), green.z()));
    Pixel const end(6.0, 2.0);
    Colour const red = canvas.at(end.column, end.row);
    EXPECT_GT(red.x(), std::max(red.y(), red.z()));
}

TEST(TopView, TheScaleIsTrue)
{
    // 2 m at 141 pixels a metre, black on white, below the plan.
    Canvas const canvas = drawTopView(room());
    int const row = canvas.height() - 22;
    for (int x = 36; x < 36 + 282; ++x) {
        EXPECT_LT(canvas.at(x, row).mean(), 0.3F) << x;
    }
    EXPECT_GT(canvas.at(36 - 2, row).mean(), 0.9F);
    EXPECT_GT(canvas.at(36 + 282 + 1, row).mean(), 0.9F);
}

TEST(TopView, AnythingCanBeDrawn)
{
    EXPECT_EQ(drawTopView({}).width(), 1200);
    TopViewScene point;
    point.points.emplace_back(5.0F, 5.0F, 5.0F);
    point.path.emplace_back(5.0F, 5.0F);
    EXPECT_EQ(drawTopView(point).width(), 1200);
    TopViewScene thin;
    thin.path = {{0.0F, 0.0F}, {10'000.0F, 1.0F}};
    EXPECT_EQ(drawTopView(thin).height(), 300 + 56);
    TopViewScene tall;
    tall.path = {{0.0F, 0.0F}, {1.0F, 1000.0F}};
    EXPECT_EQ(drawTopView(tall).width(), 300);
    EXPECT_EQ(drawTopView(tall).height(), 1200 + 56);
}
