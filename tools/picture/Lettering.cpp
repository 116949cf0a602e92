#include "tools/picture/Lettering.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace oV::Roamscan::tool
{

namespace
{

constexpr int glyphWidth = 5;
constexpr int glyphHeight = 7;
constexpr float advance = 6.0F; // dots from one letter to the next

struct Glyph
{
    char letter;
    std::array<std::string_view, glyphHeight> rows;
};

// clang-format off
constexpr std::array<Glyph, 20> glyphs{{
    {'0', {" ### ", "#   #", "#   #", "#   #", "#   #", "#   #", " ### "}},
    {'1', {"  #  ", " ##  ", "# #  ", "  #  ", "  #  ", "  #  ", "#####"}},
    {'2', {" ### ", "#   #", "    #", "  ## ", " #   ", "#    ", "#####"}},
    {'3', {" ### ", "#   #", "    #", "  ## ", "    #", "#   #", " ### "}},
    {'4', {"   # ", "  ## ", " # # ", "#  # ", "#####", "   # ", "   # "}},
    {'5', {"#####", "#    ", "#### ", "    #", "    #", "#   #", " ### "}},
    {'6', {" ### ", "#    ", "#    ", "#### ", "#   #", "#   #", " ### "}},
    {'7', {"#####", "    #", "   # ", "   # ", "  #  ", "  #  ", "  #  "}},
    {'8', {" ### ", "#   #", "#   #", " ### ", "#   #", "#   #", " ### "}},
    {'9', {" ### ", "#   #", "#   #", " ####", "    #", "    #", " ### "}},
    {'.', {"     ", "     ", "     ", "     ", "     ", " ##  ", " ##  "}},
    {'a', {"     ", "     ", " ### ", "    #", " ####", "#   #", " ####"}},
    {'d', {"    #", "    #", " ####", "#   #", "#   #", "#   #", " ####"}},
    {'e', {"     ", "     ", " ### ", "#   #", "#####", "#    ", " ### "}},
    {'k', {"#    ", "#    ", "#  # ", "# #  ", "##   ", "# #  ", "#  # "}},
    {'m', {"     ", "     ", "## # ", "# # #", "# # #", "# # #", "# # #"}},
    {'n', {"     ", "     ", "# ## ", "##  #", "#   #", "#   #", "#   #"}},
    {'r', {"     ", "     ", "# ## ", "##  #", "#    ", "#    ", "#    "}},
    {'s', {"     ", "     ", " ####", "#    ", " ### ", "    #", "#### "}},
    {'t', {" #   ", " #   ", "###  ", " #   ", " #   ", " #  #", "  ## "}},
}};
// clang-format on

} // namespace

Eigen::Vector2f textSize(std::string_view text, float scale)
{
    return {scale * (advance * static_cast<float>(text.size()) - 1.0F),
            scale * static_cast<float>(glyphHeight)};
}

void drawText(
    Canvas& canvas, std::string_view text, Eigen::Vector2f const& topLeft, float scale, Colour const& colour)
{
    Eigen::Vector2f corner = topLeft;
    for (char const letter : text) {
        auto const* const glyph = std::ranges::find(glyphs, letter, &Glyph::letter);
        for (int y = 0; glyph != glyphs.end() && y < glyphHeight; ++y) {
            std::string_view const row = glyph->rows[static_cast<std::size_t>(y)];
            for (int x = 0; x < glyphWidth; ++x) {
                if (row[static_cast<std::size_t>(x)] == '#') {
                    Eigen::Vector2f const dot(static_cast<float>(x), static_cast<float>(y));
                    canvas.drawRectangle(corner + scale * dot, {scale, scale}, colour);
                }
            }
        }
        corner.x() += scale * advance;
    }
}

} // namespace oV::Roamscan::tool
