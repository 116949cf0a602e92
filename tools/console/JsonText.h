#pragma once

#include "tools/console/Text.h"

#include <nlohmann/json.hpp>

#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

/// JSON whose objects keep the order of their members.
using Json = nlohmann::ordered_json;

/// A member that is a number, as text with a fixed count of decimals.
[[nodiscard]] inline std::string number(Json const& object, char const* member, int decimals)
{
    return fixed(object.at(member), decimals);
}

/// Prints a document as indented lines. Strings need not be valid UTF-8: file names and texts in files are
/// any bytes, and those that are not valid become U+FFFD.
inline void printJson(Json const& document, std::ostream& out)
{
    out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace oV::Roamscan::tool
