/// @file
/// Bytes from anywhere as a saved container of options: in the bare form if the first byte is odd, in the
/// keyed form otherwise. Whatever the status of the reading, the options can be looked up, and the container
/// can be saved. What was saved is loaded without a failure, and the next save gives the same bytes.

#include "StreamInput.h"

#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/ReadContext.h>
#include <roamscan/frame/formats/StatusCode.h>
#include <roamscan/frame/formats/WriteContext.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptionsCont.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using fuzz::require;
using oV::Attr;
using oV::AttrContainer;
using oV::Attribute;
using oV::Roamscan::RoamscanOptionsCont;
using Format = oV::ModelFormat::Format;
namespace StatusCode = oV::StatusCode;

constexpr auto fresh = Bv_1_1::BaseNode::CreateType::Fresh;

SmartPtr<RoamscanOptionsCont> initialised()
{
    SmartPtr<RoamscanOptionsCont> options(new RoamscanOptionsCont(fresh, nullptr));
    options->init(fresh, nullptr);
    return options;
}

int load(RoamscanOptionsCont& options, std::string const& text, Format format)
{
    std::istringstream stream(text);
    oV::ReadContext context(format);
    int const status = options.readFrom(&stream, &context);
    options.initializeCustomAttributes();
    return status;
}

std::string save(RoamscanOptionsCont& options, Format format)
{
    options.updateToCurrentOptions();
    std::ostringstream stream;
    oV::WriteContext context(format);
    require(options.writeTo(&stream, &context) == StatusCode::ok, "every container can be saved");
    return stream.str();
}

/// Reads the value if the option has this type, as getOption() does.
template <typename T>
void lookUp(RoamscanOptionsCont& options, String const& name)
{
    Attribute* const found = oV::Roamscan::detail::findOption(options, name);
    if (Attr<T> const* const option = oV::Roamscan::detail::asAttributeOf<T>(found)) {
        require(option->equalsAttr(*option) || option->getValue() != option->getValue(), "a value or NaN");
    }
}

void lookUpAll(RoamscanOptionsCont& options)
{
    for (unsigned int token = options.getNumStaticAttributes(); token < options.getNumAttributes(); ++token) {
        String const name = options.getAttrName(token);
        Attribute const* const first = oV::Roamscan::detail::findOption(options, name);
        require(first != nullptr && (options.getAttrToken(name) < options.getNumStaticAttributes() ||
                                     first->getName() == name),
                "each option is found by its name");
        lookUp<bool>(options, name);
        lookUp<int>(options, name);
        lookUp<double>(options, name);
        lookUp<String>(options, name);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    Format const format = data[0] % 2 == 0 ? Format::Keyed : Format::Bare;
    Format const other = format == Format::Keyed ? Format::Bare : Format::Keyed;
    auto const options = initialised();
    static_cast<void>(load(*options, std::string(data + 1, data + size), format));
    lookUpAll(*options);

    std::string const saved = save(*options, format);
    auto const again = initialised();
    require(StatusCode::isTolerated(load(*again, saved, format)), "what was saved is loaded");
    require(again->getNumAttributes() == options->getNumAttributes(), "no option is lost");
    require(save(*again, format) == saved, "what was saved comes back as it was");

    SmartPtr<AttrContainer> const copy(options->duplicate(fresh));
    require(save(static_cast<RoamscanOptionsCont&>(*copy), format) == saved, "a copy saves the same");

    auto const inOther = initialised();
    require(StatusCode::isTolerated(load(*inOther, save(*options, other), other)),
            "the other form is loaded");
    require(inOther->getNumAttributes() == options->getNumAttributes(), "the other form has all options");
    return 0;
}
