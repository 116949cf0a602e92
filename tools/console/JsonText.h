#pragma once

#include <nlohmann/json.hpp>

#include <ostream>

namespace oV::Roamscan::tool
{

/// JSON whose objects keep the order of their members.
using Json = nlohmann::ordered_json;

/// Prints a document as indented lines. Strings need not be valid UTF-8: file names and texts in files are
/// any bytes, and those that are not valid become U+FFFD.
inline void printJson(Json const& document, std::ostream& out)
{
    out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace oV::Roamscan::tool
