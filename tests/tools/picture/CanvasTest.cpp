#include "tools/picture/Canvas.h"

#include "tools/picture/Lettering.h"
#include "tools/picture/PngWriter.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Eigen::Vector2f;

Colour const white = colourOf(0xFFFFFF);
Colour const black = colourOf(0x000000);

} // namespace

TEST(Canvas, ColoursAreReadAsOnTheWeb)
{
    Canvas const canvas(1, 1, colourOf(0x12A0FF));
    EXPECT_EQ(canvas.toBytes(), (std::vector<std::uint8_t>{0x12, 0xA0, 0xFF}));
}

TEST(Canvas, RectanglesCoverTheirPixels)
{
    Canvas canvas(6, 4, white);
    canvas.drawRectangle({1.0F, 1.0F}, {3.0F, 2.0F}, black);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 6; ++x) {
            bool const inside = x >= 1 && x < 4 && y >= 1 && y < 3;
            EXPECT_EQ(canvas.at(x, y), inside ? black : white) << x << ' ' << y;
        }
    }
}

TEST(Canvas, LinesAreAsThickAsAskedAndStayWithinThePicture)
{
    Canvas canvas(20, 20, white);
    std::array<Vector2f, 3> const points{
        Vector2f(-1000.0F, 10.0F), Vector2f(1e9F, 10.0F), Vector2f(1e9F, -1e9F)};
    canvas.drawLine(points, 4.0F, black);
    for (int y = 0; y < 20; ++y) {
        EXPECT_EQ(canvas.at(7, y), y >= 8 && y < 12 ? black : white) << y;
    }
}

TEST(Canvas, DiscsAreRound)
{
    Canvas canvas(21, 21, white);
    canvas.drawDisc({10.5F, 10.5F}, 5.0F, black);
    EXPECT_EQ(canvas.at(10, 10), black);
    EXPECT_EQ(canvas.at(14, 10), black);
    EXPECT_EQ(canvas.at(16, 10), white);
    EXPECT_EQ(canvas.at(14, 14), white);
}

TEST(Lettering, LettersAreDots)
{
    EXPECT_EQ(textSize("12", 3.0F), Vector2f(33.0F, 21.0F));
    Canvas canvas(5, 7, white);
    drawText(canvas, "t", {0.0F, 0.0F}, 1.0F, black);
    std::string drawn;
    for (int y = 0; y < 7; ++y) {
        for (int x = 0; x < 5; ++x) {
            drawn += canvas.at(x, y) == black ? '#' : '.';
        }
    }
    EXPECT_EQ(drawn,
              ".#..."
              ".#..."
              "###.."
              ".#..."
              ".#..."
              ".#..#"
              "..##.");
}

TEST(PngWriter, WritesTheSizeAndTheKindIntoTheHeader)
{
    std::ostringstream stream;
    writePng(Canvas(300, 2, white), stream);
    std::string const bytes = stream.str();
    EXPECT_EQ(bytes.substr(0, 26),
              std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x01\x2C\0\0\0\x02\x08\x02", 26)); // 8 bits, RGB
    EXPECT_EQ(bytes.substr(bytes.size() - 8, 4), "IEND");
}
