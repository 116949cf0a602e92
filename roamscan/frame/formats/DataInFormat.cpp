#include <roamscan/frame/formats/DataInFormat.h>
#include <roamscan/frame/formats/detail/TokenReader.h>

#include <charconv>
#include <string>
#include <system_error>

namespace oV
{

template <>
std::optional<bool> DataInFormat<bool>::get()
{
    detail::TokenReader& tokens = in_.valueTokens();
    std::optional<std::string> const word = tokens.readWord();
    if (!word) {
        return std::nullopt;
    }
    if (*word != "true" && *word != "false") {
        tokens.fail(StatusCode::wrongKind);
        return std::nullopt;
    }
    return *word == "true";
}

template <>
std::optional<int> DataInFormat<int>::get()
{
    detail::TokenReader& tokens = in_.valueTokens();
    std::optional<std::string> const word = tokens.readWord();
    if (!word) {
        return std::nullopt;
    }
    int number = 0;
    char const* const last = word->data() + word->size();
    auto const [end, error] = std::from_chars(word->data(), last, number);
    if (end != last) {
        tokens.fail(StatusCode::wrongKind);
        return std::nullopt;
    }
    if (error != std::errc{}) {
        tokens.fail(StatusCode::outOfRange);
        return std::nullopt;
    }
    return number;
}

template <>
std::optional<double> DataInFormat<double>::get()
{
    detail::TokenReader& tokens = in_.valueTokens();
    std::optional<std::string> const word = tokens.readWord();
    if (!word) {
        return std::nullopt;
    }
    int status = StatusCode::ok;
    std::optional<double> const number = detail::numberOfText(*word, status);
    if (!number) {
        tokens.fail(status);
    }
    return number;
}

template <>
std::optional<Bv_1_1::String> DataInFormat<Bv_1_1::String>::get()
{
    return in_.valueTokens().readText();
}

template <>
std::optional<std::vector<Bv_1_1::String>> DataInFormat<std::vector<Bv_1_1::String>>::get()
{
    return in_.valueTokens().readTexts();
}

} // namespace oV
