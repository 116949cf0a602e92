#include "tools/io/Output.h"

#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"

#include <algorithm>
#include <random>
#include <string>
#include <system_error>
#include <vector>

#if !defined(_WIN32)
#include <unistd.h>
#endif

namespace oV::Roamscan::tool
{

namespace
{

namespace fs = std::filesystem;

/// Follows links, also one to a file that does not exist yet, which weakly_canonical() leaves as it is.
fs::path withoutLinks(fs::path const& target)
{
    constexpr int mostLinks = 40;
    fs::path real = target;
    std::error_code failure;
    for (int links = 0; !isStandardStream(real) && fs::is_symlink(fs::symlink_status(real, failure)); ++links)
    {
        fs::path const next = fs::read_symlink(real, failure);
        if (failure || links == mostLinks) {
            throw fileError(target,
                            "the link cannot be followed: " +
                                (failure ? failure.message() : std::string("there are too many links")));
        }
        real = real.parent_path() / next; // `next` if it is absolute
    }
    return real;
}

/// A random name in the folder of the target, and so on the same file system: renaming does not copy.
fs::path temporaryBeside(fs::path const& target)
{
    if (isStandardStream(target)) {
        return nameInTemporaryFolder();
    }
    return fs::path(target) += ".part-" + std::to_string(std::random_device()());
}

/// Whether there is something that may not be written to. A mode without any permission to write counts also
/// for a user who may write nevertheless.
bool isReadOnly(fs::path const& target)
{
    constexpr fs::perms writing = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    std::error_code failure;
    fs::file_status const status = fs::status(target, failure);
    if (!fs::exists(status)) {
        return false;
    }
#if !defined(_WIN32)
    if (access(target.c_str(), W_OK) != 0) {
        return true;
    }
#endif
    return (status.permissions() & writing) == fs::perms::none;
}

} // namespace

Output::Output(fs::path const& target, Temporary::Kind kind, std::string const& extension)
    : target_(withoutLinks(target)), temporary_(temporaryBeside(target_), kind, extension)
{
    if (!isStandardStream(target) && isReadOnly(target_)) {
        throw fileError(target, "is read-only and is not replaced; make it writable, or give another name");
    }
}

void Output::takeModeOfTarget() const
{
    std::error_code failure;
    fs::file_status const status = fs::status(target_, failure);
    // A temporary that was removed meanwhile is reported when it is put in place.
    if (fs::exists(status) && fs::exists(temporary(), failure)) {
        fs::permissions(temporary(), status.permissions(), failure);
        if (failure) {
            throw fileError(target_, "its mode cannot be kept: " + failure.message());
        }
    }
}

void Output::commitAll(std::initializer_list<Output*> outputs)
{
    std::vector<Output*> given(outputs);
    std::erase(given, nullptr);
    std::ranges::for_each(given, &Output::finish);
    SignalsHeld const held; // all outputs get their names, or none
    std::ranges::for_each(given, &Output::putInPlace);
}

void Output::putInPlace()
{
    if (isStandardStream(target_)) {
        return;
    }
    // Renaming replaces a file, but not a folder with something in it.
    std::error_code ignored;
    bool const replacesFolder = fs::is_directory(temporary(), ignored) && fs::exists(target_, ignored);
    fs::path const previous = temporaryBeside(target_);
    std::error_code failure;
    if (replacesFolder) {
        fs::rename(target_, previous, failure);
    }
    if (!failure) {
        fs::rename(temporary(), target_, failure);
        if (failure && replacesFolder) {
            fs::rename(previous, target_, ignored);
        }
    }
    if (failure) {
        throw fileError(target_, "could not be put in place: " + failure.message());
    }
    temporary_.release();
    if (replacesFolder) {
        fs::remove_all(previous, ignored);
    }
}

void requireDistinctFiles(std::initializer_list<fs::path> paths)
{
    std::vector<fs::path> seen;
    for (fs::path const& path : paths) {
        if (path.empty() || isStandardStream(path)) {
            continue;
        }
        for (fs::path const& other : seen) {
            std::error_code ignored;
            if (fs::equivalent(path, other, ignored) ||
                fs::absolute(path).lexically_normal() == fs::absolute(other).lexically_normal())
            {
                throw fileError(path, "is named twice; give every file its own name");
            }
        }
        seen.push_back(path);
    }
}

} // namespace oV::Roamscan::tool
