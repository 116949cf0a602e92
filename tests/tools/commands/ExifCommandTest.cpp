#include "tests/support/JpegBytes.h"
#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using namespace support;

using namespace std::string_literals;

class ExifCommandTest : public ToolFixture
{
protected:
    [[nodiscard]] support::TestPath writeCamera(std::string const& name) const
    {
        return write(name, support::jpegWithBlock(support::cameraBlock(support::ByteOrder::Big)));
    }

    /// A picture whose make is this text.
    [[nodiscard]] support::TestPath writeMake(std::string const& name, std::string const& make) const
    {
        auto const size = static_cast<std::uint32_t>(make.size());
        return write(name,
                     support::jpegWithBlock(support::tiffBlock(
                         support::ByteOrder::Little, {{271, size, support::placeBehind(1)}}, make)));
    }

    /// What stands below the heading, without the name of the file.
    [[nodiscard]] static std::string rowOf(std::string const& picture)
    {
        ToolRun const exif = run({"exif", picture});
        EXPECT_EQ(exif.status, 0) << exif.err;
        std::string const row = lastLine(exif.out);
        return row.substr(0, picture.size()) == picture ? row.substr(picture.size()) : "";
    }
};

} // namespace

TEST_F(ExifCommandTest, ShowsATable)
{
    auto const camera = writeCamera("a.jpg");
    auto const other = writeMake("longer.jpg", "Somebody\0"s);
    std::size_t const width = other.string().size();
    auto const padded = [width](std::string text) {
        text.resize(width, ' ');
        return text;
    };
    ToolRun const exif = run({"exif", camera, other});
    EXPECT_EQ(exif.status, 0) << exif.err;
    EXPECT_EQ(exif.out,
              padded("file") + "  date and time        make      model\n" + padded(camera) +
                  "  2008:07:31 16:49:10  ACME      X100-S\n" + padded(other) +
                  "  -                    Somebody  -\n");
}

TEST_F(ExifCommandTest, APictureWithoutABlockIsNotAFailure)
{
    EXPECT_EQ(rowOf(write("a.png", "\x89PNG\r\n")), "  no valid EXIF block");
    EXPECT_EQ(rowOf(write("empty", "")), "  no valid EXIF block");
}

TEST_F(ExifCommandTest, PaddingIsNotShown)
{
    EXPECT_EQ(rowOf(writeMake("a.jpg", "PENTAX  \0\0 \0"s)), "  -              PENTAX  -");
    EXPECT_EQ(rowOf(writeMake("b.jpg", "     \0"s)), "  -              -     -");
}

TEST_F(ExifCommandTest, ControlCharactersAreNotShown)
{
    EXPECT_EQ(rowOf(writeMake("a.jpg", "a\x1b[2J\nb\0c\x9b\xff"s)), "  -              a?[2J?b?c??  -");
}

TEST_F(ExifCommandTest, LongTextsAreCut)
{
    EXPECT_EQ(rowOf(writeMake("a.jpg", std::string(40, 'm'))),
              "  -              " + std::string(40, 'm') + "  -");
    EXPECT_EQ(rowOf(writeMake("b.jpg", std::string(41, 'm'))),
              "  -              " + std::string(37, 'm') + "...  -");
}

TEST_F(ExifCommandTest, PrintsJson)
{
    auto const camera = writeCamera("a.jpg");
    auto const none = write("b.jpg", "");
    ToolRun const exif = run({"exif", "--json", camera, none});
    EXPECT_EQ(exif.status, 0) << exif.err;
    EXPECT_EQ(exif.out,
              "[\n"
              "  {\n"
              "    \"file\": " +
                  quoted(camera) +
                  ",\n"
                  "    \"valid\": true,\n"
                  "    \"dateTime\": \"2008:07:31 16:49:10\",\n"
                  "    \"manufacturer\": \"ACME\",\n"
                  "    \"model\": \"X100-S\"\n"
                  "  },\n"
                  "  {\n"
                  "    \"file\": " +
                  quoted(none) +
                  ",\n"
                  "    \"valid\": false,\n"
                  "    \"dateTime\": \"\",\n"
                  "    \"manufacturer\": \"\",\n"
                  "    \"model\": \"\"\n"
                  "  }\n"
                  "]\n");
}

TEST_F(ExifCommandTest, JsonKeepsTheBlanksAndIsUtf8)
{
    EXPECT_NE(run({"exif", "--json", writeMake("a.jpg", "PENTAX  \0\0"s)}).out.find("\"PENTAX  \""),
              std::string::npos);
    EXPECT_NE(
        run({"exif", "--json", writeMake("b.jpg", "a\xff\x1b z")}).out.find("\"a\xEF\xBF\xBD\\u001b z\""),
        std::string::npos);
}

TEST_F(ExifCommandTest, OneBadFileDoesNotStopTheOthers)
{
    auto const camera = writeCamera("a.jpg");
    auto const missing = file("missing.jpg");
    ToolRun const table = run({"exif", missing, camera, file("")});
    EXPECT_EQ(table.status, 1);
    EXPECT_EQ(lineCount(table.err), 2) << table.err;
    EXPECT_NE(table.err.find(missing.string() + ": there is no such file"), std::string::npos);
    EXPECT_NE(table.out.find("X100-S"), std::string::npos);
    ToolRun const json = run({"exif", "--json", missing, camera});
    EXPECT_EQ(json.status, 1);
    EXPECT_NE(json.out.find("\"error\": "), std::string::npos);
    EXPECT_NE(json.out.find("\"model\": \"X100-S\""), std::string::npos);
    EXPECT_EQ(run({"exif", missing}).out, "");
}
