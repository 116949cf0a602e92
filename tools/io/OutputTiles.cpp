#include "tools/io/OutputTiles.h"

#include "tools/console/PathText.h"
#include "tools/console/ToolError.h"
#include "tools/io/Pictures.h"

#include <roamscan/frame/failures/VisibleException.h>
#include <roamscan/imagery/LargeImageSerialization.h>

#include <algorithm>
#include <system_error>

namespace oV::Roamscan::tool
{

namespace
{

namespace fs = std::filesystem;

bool isTile(fs::directory_entry const& entry, std::string const& extension)
{
    std::string const number = utf8(entry.path().stem());
    std::error_code ignored;
    return std::ranges::all_of(number, [](char c) { return c >= '0' && c <= '9'; }) &&
           entry.path().extension() == extension && entry.is_regular_file(ignored);
}

} // namespace

void requireOnlyTiles(fs::path const& folder, std::string const& extension)
{
    std::error_code failure;
    auto const type = fs::status(folder, failure).type();
    if (type == fs::file_type::not_found) {
        return;
    }
    if (type != fs::file_type::directory) {
        throw fileError(folder,
                        "is no folder, but the tiles need one of this name; move it away or give the picture "
                        "another name");
    }
    for (fs::directory_iterator entry(folder, failure); !failure && entry != fs::directory_iterator();
         entry.increment(failure))
    {
        if (!isTile(*entry, extension)) {
            throw fileError(entry->path(),
                            "is no " + extension +
                                " tile, and its folder would be replaced; move it away or give the picture "
                                "another name");
        }
    }
    if (failure) {
        throw fileError(folder, "cannot be listed: " + failure.message());
    }
}

OutputTiles::OutputTiles(fs::path const& picture)
    : Output(fs::path(picture).replace_extension(), Temporary::Kind::Tiles, utf8(picture.extension())),
      extension_(utf8(picture.extension()))
{
    requirePictureFormat(picture);
    requireOnlyTiles(target(), extension_);
    std::error_code failure;
    if (!fs::create_directory(temporary(), failure)) {
        throw fileError(target(), "cannot be created: " + failure.message());
    }
}

void OutputTiles::write(cv::Mat const& image) const
{
    try {
        LargeImageSerialization::serializeImage(image, placeOfTiles(picture()));
    } catch (VisibleException const&) {
        throw fileError(target(),
                        "a tile could not be written; is the disk full, or the picture of a kind that " +
                            extension_ + " cannot hold?");
    }
}

void OutputTiles::finish()
{
    requireOnlyTiles(target(), extension_);
    takeModeOfTarget();
}

} // namespace oV::Roamscan::tool
