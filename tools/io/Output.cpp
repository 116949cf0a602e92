#include "tools/io/Output.h"

#include "tools/console/ToolError.h"

#include <algorithm>
#include <random>
#include <string>
#include <system_error>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

namespace fs = std::filesystem;

fs::path withoutLinks(fs::path const& target)
{
    std::error_code failure;
    if (!fs::is_symlink(fs::symlink_status(target, failure))) {
        return target;
    }
    fs::path real = fs::weakly_canonical(target, failure);
    if (failure) {
        throw fileError(target, "the link cannot be followed: " + failure.message());
    }
    return real;
}

/// A random name in the folder of the target, and so on the same file system: renaming does not copy.
fs::path temporaryBeside(fs::path const& target)
{
    return fs::path(target) += ".part-" + std::to_string(std::random_device()());
}

} // namespace

Output::Output(fs::path const& target) : target_(withoutLinks(target)), temporary_(temporaryBeside(target_))
{}

Output::~Output()
{
    if (!committed_) {
        std::error_code ignored;
        fs::remove_all(temporary_, ignored);
    }
}

void Output::commitAll(std::initializer_list<Output*> outputs)
{
    std::vector<Output*> given(outputs);
    std::erase(given, nullptr);
    std::ranges::for_each(given, &Output::finish);
    std::ranges::for_each(given, &Output::putInPlace);
}

void Output::putInPlace()
{
    // Renaming replaces a file, but not a folder with something in it.
    std::error_code ignored;
    bool const replacesFolder = fs::is_directory(temporary_, ignored) && fs::exists(target_, ignored);
    fs::path const previous = temporaryBeside(target_);
    std::error_code failure;
    if (replacesFolder) {
        fs::rename(target_, previous, failure);
    }
    if (!failure) {
        fs::rename(temporary_, target_, failure);
        if (failure && replacesFolder) {
            fs::rename(previous, target_, ignored);
        }
    }
    if (failure) {
        throw fileError(target_, "could not be put in place: " + failure.message());
    }
    committed_ = true;
    if (replacesFolder) {
        fs::remove_all(previous, ignored);
    }
}

void requireDistinctFiles(std::initializer_list<fs::path> paths)
{
    std::vector<fs::path> seen;
    for (fs::path const& path : paths) {
        if (path.empty()) {
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
