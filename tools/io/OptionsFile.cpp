#include "tools/io/OptionsFile.h"

#include "tools/console/ToolError.h"
#include "tools/io/FileKind.h"
#include "tools/io/InputFile.h"
#include "tools/io/OutputFile.h"

#include <roamscan/frame/attributes/AttrDefinition.h>
#include <roamscan/frame/formats/ReadContext.h>
#include <roamscan/frame/formats/ReadFromScope.h>
#include <roamscan/frame/formats/StatusCode.h>
#include <roamscan/frame/formats/WriteContext.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

using Bv_1_1::BaseNode;
using Bv_1_1::String;
using Format = ModelFormat::Format;

std::string readAll(std::filesystem::path const& path)
{
    InputFile file = openInput(path);
    std::ostringstream text;
    if (file.size > 0) {
        text << file.stream.rdbuf();
    }
    if (file.stream.bad() || !text) {
        throw fileError(path, "cannot be read; check the medium");
    }
    return text.str();
}

Format formatOf(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    std::size_t const start = text.find_first_not_of(blanks);
    std::string_view const rest = start == std::string_view::npos ? "" : text.substr(start);
    std::string_view const word = rest.substr(0, rest.find_first_of(blanks));
    return word == "true" || word == "false" ? Format::Bare : Format::Keyed;
}

char const* meaningOf(int status)
{
    switch (status) {
    case StatusCode::unexpectedEnd:
        return "the text ends too early";
    case StatusCode::wrongKind:
        return "a value has another type than its option";
    case StatusCode::outOfRange:
        return "a number is out of range";
    case StatusCode::tooDeep:
        return "too many blocks are open";
    default:
        return "this is not the text of a saved options container";
    }
}

void readInto(RoamscanOptionsCont& options,
              std::string const& text,
              Format format,
              std::filesystem::path const& path)
{
    std::istringstream stream(text);
    ReadContext context(format);
    ReadFromScope const scope(&stream, &context); // the outermost scope, which has the line of a failure
    int const status = options.readFrom(&stream, &context);
    if (!StatusCode::isTolerated(status)) {
        if (FileKind const kind = kindOfFile(path); kind != FileKind::Unknown) {
            throw fileError(path, "this is " + describe(kind));
        }
        throw lineError(path,
                        scope.getImf().lineNumber(),
                        std::string(meaningOf(status)) + "; restore the file from a copy");
    }
}

void makeOption(RoamscanOptionsCont& options, String const& name, String const& typeKey)
{
    AttrDefinition const definition{
        0, name, AttrContainer::getTypeFromStringKey(typeKey), AttrDefinition::customFlag};
    options.addAttribute(definition.createAttr(BaseNode::CreateType::Fresh, nullptr, nullptr), name);
}

template <typename Value>
std::vector<Value> withAppended(std::vector<Value> list, Value const& value)
{
    list.push_back(value);
    return list;
}

} // namespace

OptionsFile readOptionsFile(std::filesystem::path const& path)
{
    constexpr auto fresh = BaseNode::CreateType::Fresh;
    std::string const text = readAll(path);
    OptionsFile file{Bv_1_1::SmartPtr<RoamscanOptionsCont>(new RoamscanOptionsCont(fresh, nullptr)),
                     formatOf(text)};
    RoamscanOptionsCont& options = *file.options;
    options.init(fresh, nullptr);
    options.setName(String::NIL, 0); // to see whether the text has it

    readInto(options, text, file.format, path);
    if (options.getName().isNil()) {
        throw fileError(path, "is not a saved options container; name a file that a host has saved");
    }
    std::size_t const names = options.OptionsNames().size();
    std::size_t const types = options.OptionsTypes().size();
    if (names != types) {
        throw fileError(path,
                        "lists " + std::to_string(names) + " names and " + std::to_string(types) +
                            " types of options; restore the file from a copy");
    }
    options.initializeCustomAttributes();
    // Now the options exist, and a second reading reports the line of a value that does not fit its option.
    readInto(options, text, file.format, path);
    return file;
}

void writeOptionsFile(std::filesystem::path const& path, OptionsFile const& file)
{
    OutputFile output(path);
    WriteContext context(file.format);
    if (file.options->writeTo(&output.stream(), &context) != StatusCode::ok) {
        throw fileError(path, "cannot be written" + systemReason());
    }
    output.commit();
}

Attribute* findOption(OptionsFile& file, String const& name)
{
    RoamscanOptionsCont& options = *file.options;
    unsigned int const statics = options.getNumStaticAttributes();
    if (options.getAttrToken(name) == AttrContainer::unknownToken) {
        for (wchar_t const* const typeKey : {L"Attr<bool>", L"Attr<int>", L"Attr<double>", L"Attr<String>"}) {
            if (options.isValueKept(name, typeKey)) {
                makeOption(options, name, typeKey);
                options.OptionsNames(withAppended(options.OptionsNames(), name));
                options.OptionsTypes(withAppended(options.OptionsTypes(), String(typeKey)));
                break;
            }
        }
    }
    unsigned int const token = options.getAttrToken(name);
    return token == AttrContainer::unknownToken || token < statics ? nullptr : options.getAttribute(token);
}

} // namespace oV::Roamscan::tool
