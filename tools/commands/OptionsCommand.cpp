#include "tools/commands/Commands.h"
#include "tools/commands/PathOption.h"
#include "tools/console/JsonText.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/NumberText.h"
#include "tools/io/OptionsFile.h"

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/bvbase/oVClass.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

using Bv_1_1::String;

struct OptionsArguments
{
    std::filesystem::path file;
    bool json = false;
    std::vector<std::string> set; // NAME=VALUE
    std::optional<std::string> get;
};

/// UTF-8 text, zeros included.
std::string narrow(String const& text)
{
    std::u16string_view rest = text.text();
    std::string result;
    for (std::size_t zero = rest.find(u'\0'); zero != std::u16string_view::npos; zero = rest.find(u'\0')) {
        result += String::fromUtf16(rest.substr(0, zero)).stringAnsi() + std::string(1, '\0');
        rest.remove_prefix(zero + 1);
    }
    return result + String::fromUtf16(rest).stringAnsi();
}

template <typename T>
Attr<T>* as(Attribute& option)
{
    return option.getClassType()->isDerivedFrom(Attr<T>::Class()) ? static_cast<Attr<T>*>(&option) : nullptr;
}

/// "bool" for the type key "Attr<bool>"; other keys as they are.
std::string typeName(std::string const& key)
{
    std::string_view const start = "Attr<";
    bool const isAttr = key.starts_with(start) && key.ends_with('>');
    return isAttr ? key.substr(start.size(), key.size() - start.size() - 1) : key;
}

/// The value in JSON; numbers that are not finite as texts, because JSON has none. Null for other types.
Json valueOf(Attribute& option)
{
    if (auto const* const flag = as<bool>(option)) {
        return flag->getValue();
    }
    if (auto const* const number = as<int>(option)) {
        return number->getValue();
    }
    if (auto const* const number = as<double>(option); number != nullptr && std::isfinite(number->getValue()))
    {
        return number->getValue();
    }
    if (auto const* const text = as<String>(option)) {
        return text->getValue().isNil() ? Json() : Json(narrow(text->getValue()));
    }
    String text;
    option.getValueString(text);
    return narrow(text);
}

Json describeOption(Attribute& option)
{
    return {{"name", narrow(option.getName())},
            {"type", typeName(narrow(option.getClassType()->name()))},
            {"value", valueOf(option)}};
}

/// The options that the lists name, in their order; those of unknown types have no value.
Json describeOptions(OptionsFile const& file)
{
    Json list = Json::array();
    RoamscanOptionsCont const& options = *file.options;
    std::vector<String> const names = options.OptionsNames();
    std::vector<String> const types = options.OptionsTypes();
    unsigned int token = options.getNumStaticAttributes();
    for (std::size_t i = 0; i < names.size(); ++i) {
        Attribute* const option = options.getAttribute(token);
        if (option != nullptr && option->getName() == names[i] &&
            types[i].compare(option->getClassType()->name()) == 0)
        {
            list.push_back(describeOption(*option));
            ++token;
        } else {
            list.push_back({{"name", narrow(names[i])}, {"type", typeName(narrow(types[i]))}});
        }
    }
    return list;
}

/// One word or a text in quotes.
std::string shownName(std::string const& name)
{
    return name.empty() || name.find_first_of(" \t\r\n\"") != std::string::npos
               ? Json(name).dump(-1, ' ', false, Json::error_handler_t::replace)
               : name;
}

std::string shownValue(Json const& option)
{
    if (!option.contains("value")) {
        return "(unknown type, left as it is)";
    }
    Json const& value = option.at("value");
    bool const isWord = value.is_string() && option.at("type") != "String";
    return isWord ? value.get<std::string>() : value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void printTable(Json const& list, std::ostream& out)
{
    std::size_t nameWidth = 0;
    std::size_t typeWidth = 0;
    for (Json const& option : list) {
        nameWidth = std::max(nameWidth, shownName(option.at("name")).size());
        typeWidth = std::max(typeWidth, option.at("type").get<std::string>().size());
    }
    for (Json const& option : list) {
        std::string name = shownName(option.at("name"));
        std::string type = option.at("type");
        name.resize(nameWidth + 2, ' ');
        type.resize(typeWidth + 2, ' ');
        out << oneLine(name + type + shownValue(option)) << '\n';
    }
}

/// The value for scripts: a text unchanged, all others as in the table.
void printValue(Json const& option, std::ostream& out)
{
    Json const& value = option.at("value");
    out << (value.is_string() ? value.get<std::string>() : shownValue(option)) << '\n';
}

template <typename T>
bool assign(Attr<T>* option, std::optional<T> const& value)
{
    return option != nullptr && value.has_value() && option->assignFrom(*value, nullptr, nullptr);
}

std::optional<bool> parseFlag(std::string const& text)
{
    if (text == "true" || text == "1") {
        return true;
    }
    return text == "false" || text == "0" ? std::optional(false) : std::nullopt;
}

std::optional<int> parseInt(std::string const& text)
{
    using Limits = std::numeric_limits<int>;
    std::optional<std::int64_t> const number = parseInteger(text);
    bool const fits = number.has_value() && *number >= Limits::min() && *number <= Limits::max();
    return fits ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

std::optional<double> parseDouble(std::string const& text)
{
    if (text == "nan") {
        return std::numeric_limits<double>::quiet_NaN();
    }
    if (text == "inf" || text == "-inf") {
        double const infinity = std::numeric_limits<double>::infinity();
        return text.front() == '-' ? -infinity : infinity;
    }
    return parseNumber(text);
}

/// @return null if the option was set; otherwise the kind of value that it needs
char const* setValue(Attribute& option, std::string const& text)
{
    if (auto* const flag = as<bool>(option)) {
        return assign(flag, parseFlag(text)) ? nullptr : "true or false";
    }
    if (auto* const number = as<int>(option)) {
        return assign(number, parseInt(text)) ? nullptr : "a whole number from -2147483648 to 2147483647";
    }
    if (auto* const number = as<double>(option)) {
        return assign(number, parseDouble(text)) ? nullptr : "a number, inf, -inf or nan";
    }
    return assign(as<String>(option), std::optional(String::fromNarrow(text.c_str())))
               ? nullptr
               : "a type that this tool can set";
}

ToolError noOption(std::filesystem::path const& file, std::string const& name)
{
    return fileError(file,
                     "has no option " + shownName(name) +
                         " of a known type; see roamscan options FILE for the names");
}

/// A name may contain '='. The shortest prefix that names an option is used.
Json setOption(OptionsFile& file, std::string const& assignment, std::filesystem::path const& path)
{
    std::size_t const first = assignment.find('=');
    if (first == std::string::npos) {
        throw ToolError("--set " + excerpt(assignment) + " has no '='; write --set NAME=VALUE");
    }
    for (std::size_t place = first; place != std::string::npos; place = assignment.find('=', place + 1)) {
        std::string const name = assignment.substr(0, place);
        Attribute* const option = findOption(file, String::fromNarrow(name.c_str()));
        if (option == nullptr) {
            continue;
        }
        std::string const value = assignment.substr(place + 1);
        if (char const* const needed = setValue(*option, value)) {
            throw ToolError("option " + shownName(name) + " needs " + needed + ", not " + excerpt(value));
        }
        return describeOption(*option);
    }
    throw noOption(path, assignment.substr(0, first));
}

void run(OptionsArguments const& options, std::ostream& out)
{
    OptionsFile file = readOptionsFile(options.file);
    Json changed = Json::array();
    for (std::string const& assignment : options.set) {
        changed.push_back(setOption(file, assignment, options.file));
    }
    Json shown = options.set.empty() ? describeOptions(file) : changed;
    if (options.get) {
        Attribute* const option = findOption(file, String::fromNarrow(options.get->c_str()));
        if (option == nullptr) {
            throw noOption(options.file, *options.get);
        }
        shown = describeOption(*option);
    }
    if (!options.set.empty()) {
        writeOptionsFile(options.file, file);
    }
    if (options.json) {
        printJson(shown, out);
    } else if (options.get) {
        printValue(shown, out);
    } else {
        printTable(shown, out);
    }
}

} // namespace

void addOptions(CLI::App& app, Console& console)
{
    auto const options = std::make_shared<OptionsArguments>();
    CLI::App* const command = app.add_subcommand("options", "Show and edit the saved options of plug-ins");
    addPath(*command, "FILE", options->file, "The saved options container, in the keyed or the bare form")
        ->required();
    command
        ->add_option(
            "--set", options->set, "Set an option that the file has; may be given several times (NAME=VALUE)")
        ->allow_extra_args(false)
        ->type_name("NAME=VALUE");
    command->add_option("--get", options->get, "Print only the value of this option")->type_name("NAME");
    command->add_flag("--json", options->json, "Print JSON instead of text");
    command->footer("Examples:\n"
                    "  roamscan options options.txt --json\n"
                    "  roamscan options options.txt --set Denoise.radius=0.2 --set ShowDebug2DWindow=true\n"
                    "  roamscan options options.txt --get Denoise.radius\n");
    command->callback([options, &console] { run(*options, console.out); });
}

} // namespace oV::Roamscan::tool
