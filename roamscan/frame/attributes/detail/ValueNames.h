#pragma once

#include <roamscan/frame/attributes/AttrType.h>
#include <roamscan/frame/attributes/AttrValueTypes.h>

namespace oV::detail
{

/// The names of the classes of each value type in class records, and the code of the type. An attribute's
/// class name is its type key, which saved files contain.
template <typename T>
struct ValueNames;

template <>
struct ValueNames<bool>
{
    static constexpr wchar_t const* attribute = L"Attr<bool>";
    static constexpr wchar_t const* newValueInfo = L"NewValueInfo<bool>";
    static constexpr AttrType type = AttrType::Bool;
};

template <>
struct ValueNames<int>
{
    static constexpr wchar_t const* attribute = L"Attr<int>";
    static constexpr wchar_t const* newValueInfo = L"NewValueInfo<int>";
    static constexpr AttrType type = AttrType::Int;
};

template <>
struct ValueNames<double>
{
    static constexpr wchar_t const* attribute = L"Attr<double>";
    static constexpr wchar_t const* newValueInfo = L"NewValueInfo<double>";
    static constexpr AttrType type = AttrType::Double;
};

template <>
struct ValueNames<Bv_1_1::String>
{
    static constexpr wchar_t const* attribute = L"Attr<String>";
    static constexpr wchar_t const* newValueInfo = L"NewValueInfo<String>";
    static constexpr AttrType type = AttrType::String;
};

template <>
struct ValueNames<StringList>
{
    static constexpr wchar_t const* attribute = L"Attr<StringList>";
    static constexpr wchar_t const* newValueInfo = L"NewValueInfo<StringList>";
    static constexpr AttrType type = AttrType::Strings;
};

} // namespace oV::detail
