#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/DataInFormat.h>
#include <roamscan/frame/formats/DataOutFormat.h>
#include <roamscan/frame/formats/ReadContext.h>
#include <roamscan/frame/formats/ReadFromScope.h>
#include <roamscan/frame/formats/WriteContext.h>
#include <roamscan/frame/formats/WriteToScope.h>

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>

/// Texts of models, read and written in tests.
namespace support
{

constexpr oV::ModelFormat::Format bare = oV::ModelFormat::Format::Bare;

/// A text with an open scope on it.
class OpenText
{
public:
    explicit OpenText(std::string const& text,
                      oV::ModelFormat::Format format = oV::ModelFormat::Format::Keyed)
        : stream(text), context(format), scope(&stream, &context), in(scope.getImf())
    {}

    std::istringstream stream;
    oV::ReadContext context;
    oV::ReadFromScope scope;
    oV::ModelInFormat& in;
};

/// An output stream with an open scope.
class NewText
{
public:
    explicit NewText(oV::ModelFormat::Format format = oV::ModelFormat::Format::Keyed)
        : context(format), scope(&stream, &context), out(scope.getMof())
    {}

    [[nodiscard]] std::string text() const { return stream.str(); }

    std::ostringstream stream;
    oV::WriteContext context;
    oV::WriteToScope scope;
    oV::ModelOutFormat& out;
};

/// The next value, which must exist.
template <typename T>
T get(oV::ModelInFormat& in)
{
    std::optional<T> const value = oV::DataInFormat<T>(in).get();
    EXPECT_TRUE(value.has_value()) << "status " << in.status() << ", line " << in.lineNumber();
    return value.value_or(T{});
}

template <typename T>
void put(oV::ModelOutFormat& out, T const& value)
{
    oV::DataOutFormat<T>(out).put(value);
}

/// The text of one value in the bare form, without the line's end.
template <typename T>
std::string textOf(T const& value)
{
    NewText text(oV::ModelFormat::Format::Bare);
    put(text.out, value);
    std::string const line = text.text();
    EXPECT_TRUE(line.ends_with('\n')) << line;
    return line.substr(0, line.size() - 1);
}

/// The status of reading one value of the text as a `T`; StatusCode::ok if there is one.
template <typename T>
int statusOf(std::string const& text)
{
    OpenText open(text, oV::ModelFormat::Format::Bare);
    std::optional<T> const value = oV::DataInFormat<T>(open.in).get();
    EXPECT_EQ(value.has_value(), open.in.status() == oV::StatusCode::ok) << text;
    return open.in.status();
}

/// The value of the text, which must have one.
template <typename T>
T valueOf(std::string const& text)
{
    OpenText open(text, oV::ModelFormat::Format::Bare);
    return get<T>(open.in);
}

/// Whether the keyword is the end of a block.
inline bool isEnd(Bv_1_1::String const& keyword)
{
    return keyword.text() == u"}";
}

} // namespace support
