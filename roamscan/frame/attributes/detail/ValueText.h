#pragma once

#include <roamscan/frame/attributes/AttrValueTypes.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/ModelInFormat.h>
#include <roamscan/frame/formats/ModelOutFormat.h>

/// @file
/// The operations that differ by value type: conversion to text, defaults, and model formats.

namespace oV::detail
{

/// The value as text; parseValue() reads it back.
template <typename T>
[[nodiscard]] Bv_1_1::String textOfValue(T const& value);

/// Sets the value from text. If the text is not of the value's type, the value is unchanged.
template <typename T>
void parseValue(Bv_1_1::String const& text, T& value);

/// Whether the value is a default, which writers may omit.
template <typename T>
[[nodiscard]] bool countsAsDefault(T const& value);

/// Reads one value. If there is none, the value is unchanged and the input has failed.
template <typename T>
void readValue(ModelInFormat& in, T& value);

/// Writes one value.
template <typename T>
void writeValue(ModelOutFormat& out, T const& value);

} // namespace oV::detail
