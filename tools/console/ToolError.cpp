#include "tools/console/ToolError.h"

#include "tools/console/PathText.h"

#include <cerrno>
#include <system_error>

namespace oV::Roamscan::tool
{

ToolError fileError(std::filesystem::path const& file, std::string const& why)
{
    return ToolError((file.empty() ? "\"\"" : utf8(file)) + ": " + why);
}

ToolError lineError(std::filesystem::path const& file, std::uint64_t line, std::string const& why)
{
    return ToolError(utf8(file) + ":" + std::to_string(line) + ": " + why);
}

std::string systemReason()
{
    return errno == 0 ? std::string() : ": " + std::generic_category().message(errno);
}

} // namespace oV::Roamscan::tool
