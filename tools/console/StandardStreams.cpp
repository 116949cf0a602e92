#include "tools/console/StandardStreams.h"

#if defined(_WIN32)

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <iostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace oV::Roamscan::tool
{

namespace
{

/// The size of the text without a character at its end that is not complete yet.
std::size_t sizeOfWholeCharacters(std::string_view utf8)
{
    auto const isBegin = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
    std::size_t const longest = std::min<std::size_t>(utf8.size(), 4);
    for (std::size_t bytes = 1; bytes <= longest; ++bytes) {
        auto const first = static_cast<unsigned char>(utf8[utf8.size() - bytes]);
        if (isBegin(utf8[utf8.size() - bytes])) {
            std::size_t const expected = first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
            return bytes < expected ? utf8.size() - bytes : utf8.size();
        }
    }
    return utf8.size();
}

/// Writes UTF-8 text to a console as UTF-16.
class ConsoleBuffer : public std::streambuf
{
public:
    explicit ConsoleBuffer(HANDLE console) : console_(console) {}

private:
    int_type overflow(int_type character) override
    {
        if (!traits_type::eq_int_type(character, traits_type::eof())) {
            char const c = traits_type::to_char_type(character);
            return xsputn(&c, 1) == 1 ? character : traits_type::eof();
        }
        return traits_type::not_eof(character);
    }

    std::streamsize xsputn(char const* text, std::streamsize size) override
    {
        rest_.append(text, static_cast<std::size_t>(size));
        std::size_t const whole = sizeOfWholeCharacters(rest_);
        std::string_view left(rest_.data(), whole);
        while (!left.empty()) {
            constexpr std::size_t bytesAtOnce = 4096;
            std::string_view part = left.substr(0, bytesAtOnce);
            part = part.substr(0, std::max<std::size_t>(sizeOfWholeCharacters(part), 1));
            if (!write(part)) {
                return 0;
            }
            left.remove_prefix(part.size());
        }
        rest_.erase(0, whole);
        return size;
    }

    [[nodiscard]] bool write(std::string_view utf8) const
    {
        std::wstring wide(utf8.size(), L'\0');
        int const units = MultiByteToWideChar(CP_UTF8,
                                              0,
                                              utf8.data(),
                                              static_cast<int>(utf8.size()),
                                              wide.data(),
                                              static_cast<int>(wide.size()));
        DWORD written = 0;
        return WriteConsoleW(console_, wide.data(), static_cast<DWORD>(units), &written, nullptr) != 0;
    }

    HANDLE console_;
    std::string rest_; ///< The beginning of a character.
};

} // namespace

struct StandardStreams::Redirected
{
    Redirected(std::ostream& redirected, HANDLE console)
        : buffer(console), stream(redirected), previous(redirected.rdbuf(&buffer))
    {}
    Redirected(Redirected const&) = delete;
    Redirected& operator=(Redirected const&) = delete;
    ~Redirected() { stream.rdbuf(previous); }

    ConsoleBuffer buffer;
    std::ostream& stream;
    std::streambuf* previous;
};

StandardStreams::StandardStreams()
{
    for (std::FILE* const stream : {stdin, stdout, stderr}) {
        _setmode(_fileno(stream), _O_BINARY);
    }
    DWORD mode = 0;
    if (HANDLE const out = GetStdHandle(STD_OUTPUT_HANDLE); GetConsoleMode(out, &mode) != 0) {
        out_ = std::make_unique<Redirected>(std::cout, out);
    }
    if (HANDLE const err = GetStdHandle(STD_ERROR_HANDLE); GetConsoleMode(err, &mode) != 0) {
        err_ = std::make_unique<Redirected>(std::cerr, err);
    }
}

StandardStreams::~StandardStreams() = default;

} // namespace oV::Roamscan::tool

#else

namespace oV::Roamscan::tool
{

struct StandardStreams::Redirected
{};

StandardStreams::StandardStreams() = default;
StandardStreams::~StandardStreams() = default;

} // namespace oV::Roamscan::tool

#endif
