#pragma once

#include <roamscan/frame/attributes/AttrValueTypes.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/ModelInFormat.h>
#include <roamscan/frame/formats/ModelOutFormat.h>

/// @file
/// What the types of values differ in: their text, their default, and how model formats hold them.

namespace oV::detail
{

/// The value as text; parseValue() reads it back.
template <typename T>
[[nodiscard]] Bv_1_1::String textOfValue(T const& value);

/// Sets the value from text. Text that is not of the value's type leaves the value as it is.
template <typename T>
void parseValue(Bv_1_1::String const& text, T& value);

/// Whether writers may leave the value out.
template <typename T>
[[nodiscard]] bool countsAsDefault(T const& value);

/// Reads one value. If there is none, the value stays as it is and the input has failed.
template <typename T>
void readValue(ModelInFormat& in, T& value);

/// Writes one value.
template <typename T>
void writeValue(ModelOutFormat& out, T const& value);

} // namespace oV::detail
