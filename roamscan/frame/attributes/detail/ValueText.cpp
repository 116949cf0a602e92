#include <roamscan/frame/attributes/detail/ValueText.h>
#include <roamscan/frame/formats/DataInFormat.h>
#include <roamscan/frame/formats/DataOutFormat.h>
#include <roamscan/frame/platform/detail/TextConversion.h>

#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

namespace oV::detail
{

namespace
{

// The text of a list is that of the bare form, which is UTF-8 whatever the encoding of narrow text is.
template <typename T>
constexpr bool isList = std::is_same_v<T, StringList>;

} // namespace

template <typename T>
Bv_1_1::String textOfValue(T const& value)
{
    Bv_1_1::String text;
    if constexpr (isList<T>) {
        std::ostringstream stream;
        ModelOutFormat out(&stream, ModelFormat::Format::Bare);
        writeValue(out, value);
        std::string bare = std::move(stream).str();
        bare.pop_back(); // the end of the line
        text = Bv_1_1::String::fromUtf16(Roamscan::detail::utf16FromUtf8(bare));
    } else if constexpr (std::is_same_v<T, double>) {
        text += value;
    } else if constexpr (std::is_same_v<T, Bv_1_1::String>) {
        text = value;
    } else {
        text << value;
    }
    return text;
}

template <typename T>
void parseValue(Bv_1_1::String const& text, T& value)
{
    if constexpr (isList<T>) {
        std::istringstream stream(Roamscan::detail::utf8FromUtf16(text.text()));
        ModelInFormat in(&stream, ModelFormat::Format::Bare);
        T parsed{};
        readValue(in, parsed);
        if (in.status() == StatusCode::ok && !in.hasValue()) {
            value = std::move(parsed);
        }
    } else {
        text >> value;
    }
}

template <typename T>
bool countsAsDefault(T const& value)
{
    if constexpr (std::is_same_v<T, double>) {
        return !(value > 0.0) && !(value < 0.0); // NaN as well
    } else if constexpr (std::is_same_v<T, Bv_1_1::String>) {
        return value == Bv_1_1::String::EMPTY; // NIL is not a default
    } else {
        return value == T{};
    }
}

template <typename T>
void readValue(ModelInFormat& in, T& value)
{
    if (auto read = DataInFormat<T>(in).get()) {
        value = *std::move(read);
    }
}

template <typename T>
void writeValue(ModelOutFormat& out, T const& value)
{
    DataOutFormat<T>(out).put(value);
}

template Bv_1_1::String textOfValue(bool const&);
template void parseValue(Bv_1_1::String const&, bool&);
template bool countsAsDefault(bool const&);
template void readValue(ModelInFormat&, bool&);
template void writeValue(ModelOutFormat&, bool const&);
template Bv_1_1::String textOfValue(int const&);
template void parseValue(Bv_1_1::String const&, int&);
template bool countsAsDefault(int const&);
template void readValue(ModelInFormat&, int&);
template void writeValue(ModelOutFormat&, int const&);
template Bv_1_1::String textOfValue(double const&);
template void parseValue(Bv_1_1::String const&, double&);
template bool countsAsDefault(double const&);
template void readValue(ModelInFormat&, double&);
template void writeValue(ModelOutFormat&, double const&);
template Bv_1_1::String textOfValue(Bv_1_1::String const&);
template void parseValue(Bv_1_1::String const&, Bv_1_1::String&);
template bool countsAsDefault(Bv_1_1::String const&);
template void readValue(ModelInFormat&, Bv_1_1::String&);
template void writeValue(ModelOutFormat&, Bv_1_1::String const&);
template Bv_1_1::String textOfValue(StringList const&);
template void parseValue(Bv_1_1::String const&, StringList&);
template bool countsAsDefault(StringList const&);
template void readValue(ModelInFormat&, StringList&);
template void writeValue(ModelOutFormat&, StringList const&);

} // namespace oV::detail
