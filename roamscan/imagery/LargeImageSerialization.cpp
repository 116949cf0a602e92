#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/failures/detail/IOCodeException.h>
#include <roamscan/frame/failures/detail/ThrowInternalError.h>
#include <roamscan/frame/log/Models.h>
#include <roamscan/frame/platform/detail/ParallelTasks.h>
#include <roamscan/imagery/LargeImageSerialization.h>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <tbb/concurrent_vector.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace oV::Roamscan::LargeImageSerialization
{

namespace
{

using Bv_1_1::Directory;
using Bv_1_1::File;
using Bv_1_1::SmartPtr;
using Bv_1_1::String;

constexpr int tileWidth = 1000;

// The cause of an error.
constexpr int inputOutputFailure = 18;
constexpr int mismatchOfTiles = 3;

constexpr char const* source = "LargeImageSerialization";
constexpr char const* writing = "oV::Roamscan::LargeImageSerialization::serializeImage";
constexpr char const* reading = "oV::Roamscan::LargeImageSerialization::readImage";
constexpr char const* decoding = "oV::Roamscan::LargeImageSerialization::readImage, decoding a tile";

constexpr int logSeverity = 1;

// The folder of the tiles, and how they are named in it.
class TilePlaces
{
public:
    TilePlaces(SmartPtr<File const> const& file, char const* function)
    {
        if (!file) {
            detail::throwInternalError(L"No file given.", function, source, __LINE__);
        }
        directory_ = file->getDirectory();
        tileDirectory_ = directory_->appendLevel(file->getName());
        extension_ = file->getExtension();
    }

    // If the directory cannot be created, writing the first tile fails.
    void makeDirectories() const
    {
        (void)directory_->create();
        (void)tileDirectory_->create();
    }

    [[nodiscard]] SmartPtr<File const> tile(std::size_t index) const
    {
        String name = String::EMPTY;
        name << static_cast<unsigned long long>(index) << L"." << extension_;
        return File::fromString(*tileDirectory_, name);
    }

private:
    SmartPtr<Directory const> directory_;
    SmartPtr<Directory const> tileDirectory_;
    String extension_;
};

[[nodiscard]] bool writeTile(String const& path, cv::Mat const& tile)
{
    try {
        return cv::imwrite(path.stringAnsi(), tile, {});
    } catch (cv::Exception const& failure) {
        Models::the().appendLogMsgExt(
            String::fromNarrow(failure.what()), logSeverity, source, __LINE__, writing);
        return false;
    }
}

[[nodiscard]] std::vector<String> pathsOfTiles(TilePlaces const& places)
{
    std::vector<String> paths;
    for (auto tile = places.tile(0); tile->exists(); tile = places.tile(paths.size())) {
        paths.push_back(tile->getPath());
    }
    return paths;
}

// Decodes the tiles of a picture in parallel and joins them side by side.
//
// Usually all tiles except the last are full, so the last one gives the width of the picture. It is decoded
// first, and each full tile is copied into the picture as soon as it is decoded. That frees its memory for
// the next tile and keeps only one picture in memory. If a tile turns out not to be full, no more are copied,
// and the picture is composed at the end.
class TileReader
{
public:
    explicit TileReader(std::vector<String> paths) : paths_(std::move(paths)), tiles_(paths_.size()) {}

    void decodeAll()
    {
        if (paths_.empty()) {
            return;
        }
        std::size_t const last = paths_.size() - 1;
        detail::inParallel(paths_.size(), [this, last](std::size_t i) { takeTile(i == 0 ? last : i - 1); });
    }

    // Rethrows the first error on the caller's thread.
    void throwFirstError() const
    {
        if (errors_.empty()) {
            return;
        }
        auto const& [code, message] = errors_.front();
        if (code == mismatchOfTiles) {
            throw InternalErrorException(
                message, String::fromNarrow(reading), String::fromNarrow(source), __LINE__);
        }
        throw IOCodeException(
            String::fromNarrow(reading), String::fromNarrow(source), __LINE__, code, message);
    }

    // Joins the tiles in the order of their numbers.
    [[nodiscard]] cv::Mat compose()
    {
        if (totalWidth_ > widest) {
            detail::throwInternalError(L"Img is too wide.", reading, source, __LINE__);
        }
        cv::Mat picture = fitsTheRoom() ? room_ : cv::Mat(height_, static_cast<int>(totalWidth_), type_);
        int x = 0;
        for (cv::Mat& tile : tiles_) {
            cv::Mat view = picture(cv::Rect(x, 0, tile.cols, tile.rows));
            if (tile.data != view.data) {
                tile.copyTo(view);
            }
            x += view.cols;
            tile.release();
        }
        return picture;
    }

    [[nodiscard]] bool foundTiles() const { return totalWidth_ != unknown && height_ != unknown; }

private:
    static constexpr int unknown = -1;
    static constexpr std::int64_t widest = std::numeric_limits<int>::max();

    void takeTile(std::size_t index)
    {
        decodeOrFile(index);
        if (index + 1 == tiles_.size()) {
            makeRoom(tiles_[index]);
        } else if (!isFull(tiles_[index])) {
            areFull_ = false;
        } else if (hasRoom_.load(std::memory_order_acquire) && areFull_) {
            putInPlace(index);
        }
    }

    void decodeOrFile(std::size_t index)
    {
        if (!errors_.empty()) {
            return; // the read has failed; tiles that are being decoded run to their end
        }
        try {
            decode(index);
        } catch (cv::Exception const& failure) {
            log(String::fromNarrow(failure.what()), __LINE__);
            errors_.emplace_back(inputOutputFailure, L"Error reading image from " + paths_[index]);
        } catch (InternalErrorException const& failure) {
            log(failure.getDesc(), __LINE__);
            errors_.emplace_back(mismatchOfTiles, failure.getDesc());
        }
    }

    void decode(std::size_t index)
    {
        cv::Mat tile = cv::imread(paths_[index].stringAnsi(), cv::IMREAD_UNCHANGED);
        if (tile.empty()) {
            tile = cv::Mat(); // OpenCV keeps the type of a truncated picture
        }
        totalWidth_ += tile.cols;
        if (!agrees(height_, tile.rows)) {
            detail::throwInternalError(L"Img dimensions mismatch.", decoding, source, __LINE__);
        }
        if (!agrees(type_, tile.type())) {
            detail::throwInternalError(L"Img types mismatch.", decoding, source, __LINE__);
        }
        tiles_[index] = std::move(tile);
    }

    [[nodiscard]] static bool isFull(cv::Mat const& tile) { return tile.cols == tileWidth; }

    // Allocates the whole picture, assuming that all tiles before the last one are full. If that fails, the
    // picture may still fit into memory, because tiles may be narrower.
    void makeRoom(cv::Mat const& lastTile)
    {
        auto const width = static_cast<std::int64_t>(tiles_.size() - 1) * tileWidth + lastTile.cols;
        if (lastTile.empty() || width > widest) {
            return;
        }
        try {
            room_.create(lastTile.rows, static_cast<int>(width), lastTile.type());
        } catch (cv::Exception const&) {
            return;
        }
        hasRoom_.store(true, std::memory_order_release);
    }

    // Precondition: the tile is full. Tiles that do not match the last one have been rejected before.
    void putInPlace(std::size_t index)
    {
        cv::Mat& tile = tiles_[index];
        cv::Mat view = room_(cv::Rect(static_cast<int>(index) * tileWidth, 0, tile.cols, tile.rows));
        tile.copyTo(view);
        tile = view; // frees the decoded one
    }

    [[nodiscard]] bool fitsTheRoom() const
    {
        return hasRoom_ && std::all_of(tiles_.begin(), tiles_.end() - 1, isFull);
    }

    // Whether the tile's value equals that of the first tile, which sets it.
    static bool agrees(std::atomic<int>& common, int value)
    {
        int first = unknown;
        return common.compare_exchange_strong(first, value) || first == value;
    }

    static void log(String const& message, int line)
    {
        Models::the().appendLogMsgExt(message, logSeverity, source, line, decoding);
    }

    std::vector<String> paths_;
    std::vector<cv::Mat>
        tiles_;    // each element belongs to one task; a view of room_ once the tile has been copied
    cv::Mat room_; // set before hasRoom_ is
    std::atomic<bool> hasRoom_ = false;
    std::atomic<bool> areFull_ = true; // all tiles decoded so far, except the last one
    tbb::concurrent_vector<std::pair<int, String>> errors_;
    std::atomic<std::int64_t> totalWidth_ = 0;
    std::atomic<int> height_ = unknown;
    std::atomic<int> type_ = unknown;
};

} // namespace

void serializeImage(cv::Mat const& image, SmartPtr<File const> file)
{
    TilePlaces const places(file, writing);
    places.makeDirectories();
    std::size_t index = 0;
    for (int x = 0; x < image.cols;) {
        int const width = std::min(tileWidth, image.cols - x);
        cv::Mat const tile = image(cv::Rect(x, 0, width, image.rows)); // shares the pixels
        String const path = places.tile(index)->getPath();
        if (!writeTile(path, tile)) {
            throw IOCodeException(String::fromNarrow(writing),
                                  String::fromNarrow(source),
                                  __LINE__,
                                  inputOutputFailure,
                                  L"Error writing image to " + path);
        }
        x += tile.cols;
        ++index;
    }
}

cv::Mat readImage(SmartPtr<File const> file)
{
    TileReader reader(pathsOfTiles(TilePlaces(file, reading)));
    reader.decodeAll();
    reader.throwFirstError();
    if (!reader.foundTiles()) {
        detail::throwInternalError(L"Did not find any sub images.", reading, source, __LINE__);
    }
    return reader.compose();
}

} // namespace oV::Roamscan::LargeImageSerialization
