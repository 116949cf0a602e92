// Reading and writing of containers in model formats.

#include <roamscan/frame/attributes/AttrContainer.h>
#include <roamscan/frame/attributes/detail/CustomAttributes.h>
#include <roamscan/frame/attributes/detail/KeptValues.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/formats/DataInFormat.h>
#include <roamscan/frame/formats/DataOutFormat.h>
#include <roamscan/frame/formats/ReadContext.h>
#include <roamscan/frame/formats/ReadFromScope.h>
#include <roamscan/frame/formats/WriteToScope.h>
#include <roamscan/frame/formats/detail/EndOfBlock.h>

#include <sstream>
#include <string>
#include <utility>

namespace oV
{

using Bv_1_1::String;

namespace
{

constexpr wchar_t const* staticKeyword = L"field";
constexpr wchar_t const* customKeyword = L"attribute";

bool isBare(ModelFormat::Format format)
{
    return format == ModelFormat::Format::Bare;
}

// The keyword of the current statement. In the bare form a bool replaces it.
String readKeyword(ModelInFormat& in)
{
    if (!isBare(in.format())) {
        return in.getKeyword();
    }
    bool const isCustom = DataInFormat<bool>(in).get().value_or(false);
    return isCustom ? customKeyword : staticKeyword;
}

void writeHead(ModelOutFormat& out, String const& keyword, String const& name, String const& typeKey)
{
    out.startValue(keyword);
    if (isBare(out.format())) {
        DataOutFormat<bool>(out).put(keyword == customKeyword);
    }
    DataOutFormat<String>(out).put(name);
    DataOutFormat<String>(out).put(typeKey);
}

void writeStatement(ModelOutFormat& out, detail::KeptStatement const& statement)
{
    if (!statement.name.isNil()) {
        writeHead(out, statement.keyword, statement.name, statement.typeKey);
        out.putKept(statement.rest);
    } else if (!isBare(out.format())) { // the bare form has attributes only
        out.startValue(statement.keyword);
        out.putKept(statement.rest);
    }
}

String typeKeyOf(Attribute const& attribute)
{
    return attribute.getClassType()->name();
}

bool hasMore(ModelInFormat& in)
{
    if (isBare(in.format())) {
        return in.hasValue();
    }
    String const& keyword = in.getKeyword();
    return !keyword.isNil() && !detail::isEndOfBlock(keyword);
}

} // namespace

int AttrContainer::readFrom(std::istream* stream, ReadContextBase* context)
{
    ReadFromScope const scope(stream, context);
    ModelInFormat& in = scope.getImf();
    initRead();
    int kept = StatusCode::ok;
    while (hasMore(in)) {
        int const status = readField(stream, context);
        if (!StatusCode::isTolerated(status)) {
            return status;
        }
        kept = StatusCode::keep(kept, status);
        in.nextKeyword();
    }
    if (in.status() != StatusCode::ok) {
        return in.status();
    }
    if (detail::isEndOfBlock(in.getKeyword())) {
        in.setPropagateKeyword(in.getKeyword());
    }
    return kept;
}

void AttrContainer::initRead()
{
    kept_.reset();
}

int AttrContainer::readField(std::istream* stream, ReadContextBase* context)
{
    ReadFromScope const scope(stream, context);
    ModelInFormat& in = scope.getImf();
    if (kept_ == nullptr) {
        kept_ = std::make_unique<detail::KeptValues>();
    }
    String const keyword = readKeyword(in);
    bool const isCustom = keyword == customKeyword;
    bool const isKnown = isCustom || keyword == staticKeyword;
    String name;
    String typeKey;
    if (isKnown) {
        name = DataInFormat<String>(in).get().value_or(String::NIL);
        typeKey = DataInFormat<String>(in).get().value_or(String::NIL);
        name = name.isNil() ? String::EMPTY : name;
        if (Attribute* const attribute = findToRead(isCustom, name, typeKey)) {
            return in.startBlock() ? attribute->readFrom(stream, context) : in.status();
        }
    }
    if (auto rest = in.keepRest()) {
        kept_->add({keyword, name, typeKey, *std::move(rest)});
    }
    return isCustom ? in.status() : in.unknownKeyword();
}

Attribute* AttrContainer::findToRead(bool isCustom, String const& name, String const& typeKey) const
{
    if (isCustom) {
        return findCustom(name, typeKey);
    }
    Attribute* const attribute = getAttribute(lookupToken(name));
    return attribute != nullptr && typeKeyOf(*attribute) == typeKey ? attribute : nullptr;
}

bool AttrContainer::isValueKept(String const& name, String const& typeKey) const
{
    return kept_ != nullptr && kept_->has(customKeyword, name.isNil() ? String::EMPTY : name, typeKey);
}

// The kept text is the block of a statement, so the attribute reads it like any other block.
void AttrContainer::applyKeptValue(Attribute& attribute)
{
    auto const text =
        kept_ == nullptr ? std::nullopt : kept_->take(customKeyword, attribute.name_, typeKeyOf(attribute));
    if (!text) {
        return;
    }
    std::string statement = isBare(text->format()) ? text->text() : "attribute " + text->text();
    std::istringstream stream(std::move(statement));
    ReadContext context(text->format());
    ReadFromScope const scope(&stream, &context);
    ModelInFormat& in = scope.getImf();
    if (!isBare(text->format())) {
        static_cast<void>(in.getKeyword());
    }
    if (in.startBlock()) {
        // If the text is not of the attribute's type, the attribute is unchanged.
        static_cast<void>(attribute.readFrom(&stream, &context));
    }
}

unsigned int AttrContainer::lookupToken(String const& keyword) const
{
    return getFieldToken(keyword);
}

int AttrContainer::writeTo(std::ostream* stream, WriteContextBase* context) const
{
    if (context == nullptr) {
        return StatusCode::noContext;
    }
    WriteToScope const scope(stream, context);
    ModelOutFormat& out = scope.getMof();
    for (Bv_1_1::SVec2d<int> const range : getIOTokensList()) {
        for (int token = range.x; token <= range.y; ++token) {
            int const status = writeField(static_cast<unsigned int>(token), stream, context);
            if (status != StatusCode::ok) {
                return status;
            }
        }
    }
    if (kept_ != nullptr) {
        kept_->visit([&out](detail::KeptStatement const& statement) { writeStatement(out, statement); });
    }
    return out.good() ? StatusCode::ok : StatusCode::writeFailed;
}

int AttrContainer::writeField(unsigned int token, std::ostream* stream, WriteContextBase* context) const
{
    Attribute const* const attribute = getAttribute(token);
    if (attribute == nullptr) {
        return StatusCode::ok;
    }
    WriteToScope const scope(stream, context);
    ModelOutFormat& out = scope.getMof();
    bool const isStatic = token < getNumStaticAttributes();
    writeHead(out,
              isStatic ? staticKeyword : customKeyword,
              isStatic ? getFieldName(token) : attribute->getName(),
              typeKeyOf(*attribute));
    out.startBlock();
    int const status = attribute->writeTo(stream, context);
    out.endBlock();
    return status;
}

std::vector<Bv_1_1::SVec2d<int>> AttrContainer::getIOTokensList() const
{
    int const count = static_cast<int>(getNumAttributes());
    return count == 0 ? std::vector<Bv_1_1::SVec2d<int>>() : std::vector<Bv_1_1::SVec2d<int>>{{0, count - 1}};
}

} // namespace oV
