#include "tools/io/OutputPlace.h"

#include "tools/console/ToolError.h"

#include <array>
#include <charconv>
#include <random>
#include <string>
#include <system_error>

namespace oV::Roamscan::tool
{

namespace fs = std::filesystem;

fs::path realTarget(fs::path const& target)
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

fs::path temporaryBeside(fs::path const& target)
{
    std::array<char, 16> digits{};
    auto const end = std::to_chars(digits.begin(), digits.end(), std::random_device()(), 36).ptr;
    return fs::path(target) += ".part-" + std::string(digits.data(), end);
}

} // namespace oV::Roamscan::tool
