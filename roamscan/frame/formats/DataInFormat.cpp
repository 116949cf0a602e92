#include <roamscan/frame/formats/DataInFormat.h>
#include <roamscan/frame/formats/detail/ValueText.h>

#include <charconv>
#include <string>
#include <system_error>
#include <utility>

namespace oV
{

template <>
std::optional<bool> DataInFormat<bool>::get()
{
    std::optional<std::string> const word = in_.getWord();
    if (!word) {
        return std::nullopt;
    }
    if (*word != "true" && *word != "false") {
        in_.fail(StatusCode::wrongKind);
        return std::nullopt;
    }
    return *word == "true";
}

template <>
std::optional<int> DataInFormat<int>::get()
{
    std::optional<std::string> const word = in_.getWord();
    if (!word) {
        return std::nullopt;
    }
    int number = 0;
    char const* const last = word->data() + word->size();
    auto const [end, error] = std::from_chars(word->data(), last, number);
    if (end != last || error == std::errc::invalid_argument) {
        in_.fail(StatusCode::wrongKind);
        return std::nullopt;
    }
    if (error != std::errc{}) {
        in_.fail(StatusCode::outOfRange);
        return std::nullopt;
    }
    return number;
}

template <>
std::optional<double> DataInFormat<double>::get()
{
    std::optional<std::string> const word = in_.getWord();
    if (!word) {
        return std::nullopt;
    }
    int status = StatusCode::ok;
    std::optional<double> const number = detail::numberOfText(*word, status);
    if (!number) {
        in_.fail(status);
    }
    return number;
}

template <>
std::optional<Bv_1_1::String> DataInFormat<Bv_1_1::String>::get()
{
    return in_.getText();
}

template <>
std::optional<std::vector<Bv_1_1::String>> DataInFormat<std::vector<Bv_1_1::String>>::get()
{
    std::vector<Bv_1_1::String> list;
    if (!in_.startList()) {
        return std::nullopt;
    }
    while (in_.nextElement(list.empty())) {
        std::optional<Bv_1_1::String> element = in_.getText();
        if (!element) {
            return std::nullopt;
        }
        list.push_back(std::move(*element));
    }
    return in_.status() == StatusCode::ok ? std::optional(std::move(list)) : std::nullopt;
}

} // namespace oV
