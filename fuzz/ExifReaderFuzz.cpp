/// @file
/// Reads any bytes as a JPEG file. The reader throws nothing, returns only texts from the EXIF block, and
/// reads nothing after the block.
///
/// The first byte selects what the rest is: even, a file; odd, an EXIF block, which gets the header of a
/// file. So most mutations reach the directory.

#include "StreamInput.h"

#include <roamscan/imagery/ExifReader.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <istream>
#include <optional>
#include <span>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>

namespace
{

using fuzz::require;
using oV::Roamscan::PanoramaImageData::ExifData;

constexpr std::size_t nameSize = 6;
constexpr std::size_t largestBlock = 65529;

/// A file in memory that records the furthest byte read. The bytes must outlive it.
class Picture : public std::streambuf
{
public:
    explicit Picture(std::string_view bytes) : bytes_(bytes) {}

    [[nodiscard]] std::size_t furthest() const { return furthest_; }

protected:
    std::streamsize xsgetn(char* target, std::streamsize count) override
    {
        std::size_t const taken = bytes_.copy(target, static_cast<std::size_t>(count), place_);
        place_ += taken;
        furthest_ = std::max(furthest_, place_);
        return static_cast<std::streamsize>(taken);
    }

    pos_type seekoff(off_type offset, std::ios::seekdir direction, std::ios::openmode /*which*/) override
    {
        off_type const target = static_cast<off_type>(place_) + offset;
        require(direction == std::ios::cur && offset >= 0, "the reader only seeks forward");
        if (target > static_cast<off_type>(bytes_.size())) {
            return {off_type(-1)};
        }
        place_ = static_cast<std::size_t>(target);
        return {target};
    }

private:
    std::string_view bytes_;
    std::size_t place_ = 0;
    std::size_t furthest_ = 0;
};

/// Where the reader must stop: two bytes after the first APP1 segment; empty if there is none.
std::optional<std::size_t> endOfReading(std::string_view bytes)
{
    auto const byteAt = [bytes](std::size_t place) { return static_cast<unsigned char>(bytes[place]); };
    for (std::size_t place = 0; place + 4 <= bytes.size();) {
        unsigned char const marker = byteAt(place + 1);
        std::size_t const length = byteAt(place + 2) * std::size_t{256} + byteAt(place + 3);
        if (marker == 0xE1) {
            return place + 4 + length;
        }
        place += marker == 0xD8 || marker == 0xD9 ? 2 : 2 + length;
    }
    return std::nullopt;
}

std::string pictureOf(std::span<std::uint8_t const> input)
{
    bool const isBlock = !input.empty() && input.front() % 2 == 1;
    auto const rest = input.subspan(std::min<std::size_t>(input.size(), 1));
    std::string picture;
    if (isBlock) {
        std::size_t const length = std::min(rest.size(), largestBlock) + nameSize;
        picture = {
            '\xFF', '\xD8', '\xFF', '\xE1', static_cast<char>(length >> 8U), static_cast<char>(length)};
        picture += std::string("Exif\0\0", nameSize);
    }
    picture.append(rest.begin(), rest.end());
    return picture;
}

ExifData read(std::streambuf& buffer)
{
    std::istream stream(&buffer);
    try {
        return oV::Roamscan::readExifMetaData(stream);
    } catch (std::exception const&) {
        require(false, "the reader throws nothing");
    } catch (...) {
        require(false, "the reader throws nothing of an unknown type");
    }
    return {};
}

bool same(ExifData const& a, ExifData const& b)
{
    return a.dateTime == b.dateTime && a.manufacturer == b.manufacturer && a.model == b.model &&
           a.valid == b.valid;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const bytes = pictureOf({data, size});
    Picture picture(bytes);
    ExifData const found = read(picture);
    require(picture.furthest() <= endOfReading(bytes).value_or(bytes.size()),
            "nothing after the block is read");
    for (std::string const& text : {found.dateTime, found.manufacturer, found.model}) {
        require(text.size() <= largestBlock, "a text is at most as long as the block");
        require(text.empty() || found.valid, "only a valid result has texts");
    }
    std::stringbuf again(bytes);
    require(same(found, read(again)), "the same bytes give the same result");
    return 0;
}
