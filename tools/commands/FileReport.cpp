#include "tools/commands/FileReport.h"

#include "tools/console/Text.h"

#include <exception>
#include <ostream>

namespace oV::Roamscan::tool
{

void FileReport::add(std::filesystem::path const& file, std::function<Json()> const& describe)
{
    try {
        document_.push_back(describe());
    } catch (std::exception const& failure) {
        allRead_ = false;
        err_ << "roamscan: " << oneLine(failure.what()) << '\n';
        document_.push_back({{"file", file.string()}, {"error", failure.what()}});
    }
}

void FileReport::print(std::ostream& out) const
{
    // Neither the names of files nor the texts in them need to be UTF-8.
    out << document_.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace oV::Roamscan::tool
