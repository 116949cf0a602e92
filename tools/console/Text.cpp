#include "tools/console/Text.h"

#include <algorithm>
#include <cstddef>
#include <locale>
#include <sstream>

namespace oV::Roamscan::tool
{

std::string fixed(double value, int decimals)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.setf(std::ios::fixed);
    text.precision(decimals);
    text << value;
    return text.str();
}

std::string oneLine(std::string_view text)
{
    std::string line(text);
    std::ranges::replace_if(
        line, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, '?');
    return line;
}

std::string plain(std::string_view text)
{
    std::string shown = oneLine(text);
    std::ranges::replace_if(
        shown, [](char c) { return static_cast<unsigned char>(c) > 0x7E; }, '?');
    return shown;
}

std::string excerpt(std::string_view text)
{
    constexpr std::size_t longest = 40;
    bool const cut = text.size() > longest;
    // ASCII only, because the cut may have split a multibyte character.
    std::string quoted = "\"";
    quoted += plain(text.substr(0, longest));
    return quoted += cut ? "...\"" : "\"";
}

std::string counted(std::uint64_t count, char const* one, char const* many)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

std::string listed(std::vector<std::string> const& items)
{
    std::string list;
    for (std::size_t i = 0; i < items.size(); ++i) {
        bool const last = i + 1 == items.size();
        list += i == 0 ? "" : (last ? " and " : ", ");
        list += items[i];
    }
    return list.empty() ? "none" : list;
}

} // namespace oV::Roamscan::tool
