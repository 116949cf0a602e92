#pragma once

#include "tests/support/Attributes.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/formats/ReadContext.h>
#include <roamscan/frame/formats/StatusCode.h>
#include <roamscan/frame/formats/WriteContext.h>
#include <roamscan/options/RoamscanOptionsCont.h>

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>

/// Options in containers that are not the live one, and their saved texts.
namespace support
{

using OptionsFormat = oV::ModelFormat::Format;

/// Adds an option with a value.
template <typename T>
void addOption(oV::Roamscan::RoamscanOptionsCont& options, Bv_1_1::String const& name, T const& value)
{
    attributes::add(options, name, value);
}

/// The value of the first option of a name; nothing if there is none or it has another type.
template <typename T>
[[nodiscard]] std::optional<T> optionValue(oV::Roamscan::RoamscanOptionsCont const& options,
                                           Bv_1_1::String const& name)
{
    oV::Attribute const* const attribute = options.getAttribute(options.getAttrToken(name));
    if (attribute == nullptr || !attribute->getClassType()->isDerivedFrom(oV::Attr<T>::Class())) {
        return std::nullopt;
    }
    return static_cast<oV::Attr<T> const*>(attribute)->getValue();
}

/// The number of options in the container.
[[nodiscard]] inline unsigned int optionCount(oV::Roamscan::RoamscanOptionsCont const& options)
{
    return options.getNumAttributes() - options.getNumStaticAttributes();
}

/// Saves the container as a host does.
[[nodiscard]] inline std::string
savedOptions(oV::Roamscan::RoamscanOptionsCont& options, OptionsFormat format, bool writeDefaults = true)
{
    options.updateToCurrentOptions();
    std::ostringstream stream;
    oV::WriteContext context(format, writeDefaults);
    EXPECT_EQ(options.writeTo(&stream, &context), oV::StatusCode::ok);
    return stream.str();
}

/// Loads the container as a host does.
/// @return the status of the reading
[[nodiscard]] inline int
loadOptions(oV::Roamscan::RoamscanOptionsCont& options, std::string const& text, OptionsFormat format)
{
    std::istringstream stream(text);
    oV::ReadContext context(format);
    int const status = options.readFrom(&stream, &context);
    options.initializeCustomAttributes();
    return status;
}

} // namespace support
