#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace oV::Roamscan::tool
{

/// A failure that the user can fix. The message names the file, the place in it and the remedy.
class ToolError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// "FILE: why"
[[nodiscard]] ToolError fileError(std::filesystem::path const& file, std::string const& why);

/// "FILE:LINE: why"
[[nodiscard]] ToolError
lineError(std::filesystem::path const& file, std::uint64_t line, std::string const& why);

/// The message of the last failed system call (errno) after ": "; empty if errno is 0.
[[nodiscard]] std::string systemReason();

} // namespace oV::Roamscan::tool
