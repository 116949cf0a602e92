#include "tools/io/OutputTiles.h"

#include "tools/console/ToolError.h"
#include "tools/io/OutputPlace.h"
#include "tools/io/Pictures.h"

#include <roamscan/frame/failures/VisibleException.h>
#include <roamscan/imagery/LargeImageSerialization.h>

#include <algorithm>
#include <string>
#include <system_error>

namespace oV::Roamscan::tool
{

namespace
{

namespace fs = std::filesystem;

bool isTile(fs::directory_entry const& entry, fs::path const& extension)
{
    std::string const number = entry.path().stem().string();
    std::error_code ignored;
    return std::ranges::all_of(number, [](char c) { return c >= '0' && c <= '9'; }) &&
           entry.path().extension() == extension && entry.is_regular_file(ignored);
}

/// Whether a folder of tiles stands there, which may be thrown away for new ones.
/// @throws ToolError if it is anything else: nobody asked for that to go
bool standsThere(fs::path const& folder, fs::path const& extension)
{
    std::error_code failure;
    auto const type = fs::status(folder, failure).type();
    if (type == fs::file_type::not_found) {
        return false;
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
                            "is no " + extension.string() +
                                " tile, and the folder is to be replaced; move it away or give the picture "
                                "another name");
        }
    }
    if (failure) {
        throw fileError(folder, "cannot be looked into: " + failure.message());
    }
    return true;
}

} // namespace

OutputTiles::OutputTiles(fs::path const& picture) : picture_(picture)
{
    requirePictureFormat(picture);
    folder_ = realTarget(fs::path(picture).replace_extension());
    (void)standsThere(folder_, picture.extension());
    temporary_ = temporaryBeside(folder_);
    place_ = placeOfTiles(fs::path(temporary_) += picture.extension());
    std::error_code failure;
    if (!fs::create_directory(temporary_, failure)) {
        throw fileError(folder_, "cannot be made: " + failure.message());
    }
}

OutputTiles::~OutputTiles()
{
    if (!committed_) {
        std::error_code ignored;
        fs::remove_all(temporary_, ignored);
    }
}

void OutputTiles::write(cv::Mat const& image) const
{
    try {
        LargeImageSerialization::serializeImage(image, place_);
    } catch (VisibleException const&) {
        throw fileError(folder_,
                        "a tile could not be written; is the disk full, or the picture of a kind that " +
                            picture_.extension().string() + " cannot hold?");
    }
}

void OutputTiles::commit()
{
    fs::path const replaced = temporaryBeside(folder_);
    bool const replaces = standsThere(folder_, picture_.extension());
    std::error_code failure;
    if (replaces) {
        fs::rename(folder_, replaced, failure);
    }
    if (!failure) {
        fs::rename(temporary_, folder_, failure);
        if (failure && replaces) {
            std::error_code ignored;
            fs::rename(replaced, folder_, ignored);
        }
    }
    if (failure) {
        throw fileError(folder_, "could not be put in place: " + failure.message());
    }
    committed_ = true;
    if (replaces) {
        fs::remove_all(replaced, failure);
    }
}

} // namespace oV::Roamscan::tool
