#pragma once

#include "tests/support/TemporaryFolder.h"

#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/failures/VisibleException.h>
#include <roamscan/frame/log/Models.h>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

/// Shared helpers for tests of tiled pictures.
namespace support
{

using Bv_1_1::File;
using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using oV::Models;

inline constexpr char const* serializeName = "oV::Roamscan::LargeImageSerialization::serializeImage";
inline constexpr char const* readName = "oV::Roamscan::LargeImageSerialization::readImage";

inline std::string narrow(String const& string)
{
    return string.stringAnsi();
}

/// Pixels that encode their position, with noise, so that swapped or shifted tiles are detected.
inline cv::Mat makeImage(int rows, int columns, int type = CV_8UC3)
{
    cv::Mat image(rows, columns, type);
    cv::RNG noise(20261121);
    noise.fill(image, cv::RNG::UNIFORM, 0, 65536);
    return image;
}

inline bool sameImage(cv::Mat const& a, cv::Mat const& b)
{
    if (a.size() != b.size() || a.type() != b.type()) {
        return false;
    }
    return a.empty() || cv::norm(a, b, cv::NORM_INF) == 0.0;
}

/// A test with its own folder and log.
class TiledPictures : public testing::Test
{
protected:
    TiledPictures() { Models::the().clearLog(); }
    ~TiledPictures() override
    {
        Models::the().setLogSink({});
        Models::the().clearLog();
    }

    [[nodiscard]] SmartPtr<File const> place(std::string const& name = "pano.png") const
    {
        return File::fromPath(String::fromUtf16(folder.file(name).u16string()));
    }

    [[nodiscard]] TestPath tilePath(std::string const& name) const { return folder.file("pano/" + name); }

    [[nodiscard]] cv::Mat readTile(std::string const& name) const
    {
        return cv::imread(tilePath(name), cv::IMREAD_UNCHANGED);
    }

    void writeTile(std::string const& name, cv::Mat const& tile) const
    {
        std::filesystem::create_directory(folder.file("pano"));
        ASSERT_TRUE(cv::imwrite(tilePath(name), tile));
    }

    support::TemporaryFolder folder;
};

/// The exception that a call throws.
struct Failure
{
    bool isVisible = false;
    bool isInternal = false;
    int code = 0;
    std::string message;
    std::string function;
    std::string file;
};

template <typename Call>
Failure failureOf(Call const& call)
{
    try {
        call();
    } catch (oV::VisibleException const& failure) {
        return {true,
                false,
                failure.getCode(),
                narrow(failure.getDesc()),
                narrow(failure.getFunction()),
                narrow(failure.getFile())};
    } catch (oV::InternalErrorException const& failure) {
        return {false,
                true,
                0,
                narrow(failure.getDesc()),
                narrow(failure.getFunction()),
                narrow(failure.getFile())};
    }
    return {};
}

inline void expectInternal(Failure const& failure, std::string const& message, std::string const& function)
{
    EXPECT_TRUE(failure.isInternal);
    EXPECT_EQ(failure.message, message);
    EXPECT_EQ(failure.function, function);
    EXPECT_EQ(failure.file, "LargeImageSerialization");
}

inline void expectInputOutput(Failure const& failure, std::string const& message, std::string const& function)
{
    EXPECT_TRUE(failure.isVisible);
    EXPECT_EQ(failure.code, 18);
    EXPECT_EQ(failure.message, message);
    EXPECT_EQ(failure.function, function);
    EXPECT_EQ(failure.file, "LargeImageSerialization");
}

[[noreturn]] inline void failAsOpenCV()
{
    CV_Error(cv::Error::StsNoMem, "scarce");
}

/// While it exists, OpenCV cannot allocate pictures larger than the given number of bytes.
class ScarceMemory : public cv::MatAllocator
{
public:
    explicit ScarceMemory(std::size_t most, std::function<void()> fail = failAsOpenCV)
        : most_(most), fail_(std::move(fail))
    {
        cv::Mat::setDefaultAllocator(this);
    }
    ScarceMemory(ScarceMemory const&) = delete;
    ScarceMemory& operator=(ScarceMemory const&) = delete;
    ~ScarceMemory() override { cv::Mat::setDefaultAllocator(plain_); }

    cv::UMatData* allocate(int dimensions,
                           int const* sizes,
                           int type,
                           void* data,
                           std::size_t* steps,
                           cv::AccessFlag access,
                           cv::UMatUsageFlags usage) const override
    {
        auto size = static_cast<std::size_t>(CV_ELEM_SIZE(type));
        for (int i = 0; i < dimensions; ++i) {
            size *= static_cast<std::size_t>(sizes[i]);
        }
        if (size > most_) {
            fail_();
        }
        return plain_->allocate(dimensions, sizes, type, data, steps, access, usage);
    }

    bool allocate(cv::UMatData* data, cv::AccessFlag access, cv::UMatUsageFlags usage) const override
    {
        return plain_->allocate(data, access, usage);
    }

    void deallocate(cv::UMatData* data) const override { plain_->deallocate(data); }

private:
    std::size_t most_;
    std::function<void()> fail_;
    cv::MatAllocator* plain_ = cv::Mat::getDefaultAllocator();
};

} // namespace support
