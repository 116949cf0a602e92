#pragma once

/// @file
/// The status codes of reading and writing models, and how a reader treats them.

#include <algorithm>
#include <array>

/// Status codes of reading and writing. 0 is success. Codes up to 17 here are failures that no reader
/// tolerates.
namespace oV::StatusCode
{

inline constexpr int ok = 0;            ///< success
inline constexpr int syntaxError = 1;   ///< the text does not follow the grammar of ModelFormat
inline constexpr int unexpectedEnd = 2; ///< the text ends inside a statement, a value or a block
inline constexpr int wrongKind = 3;     ///< a well-formed value of another kind than the one asked for
inline constexpr int outOfRange =
    4; ///< a number or text beyond the range of its type, or a number that rounds to 0
inline constexpr int tooDeep = 6;         ///< more than ModelFormat::maxDepth open blocks
inline constexpr int readFailed = 17;     ///< no input stream, or one that failed
inline constexpr int writeFailed = 18;    ///< no output stream, or one whose state is not clean
inline constexpr int unknownKeyword = 23; ///< a keyword that nobody knows was skipped; tolerated
inline constexpr int noContext = 27;      ///< no write context was given

namespace detail
{

inline constexpr std::array tolerated = {0,  5,  12,  23,  24,  30,  31,  34,  42,  43,  50,  51,  52, 54,
                                         57, 87, 122, 124, 162, 209, 216, 268, 269, 274, 277, 279, 280};

} // namespace detail

/// Whether a reader goes on after this status of a part.
[[nodiscard]] constexpr bool isTolerated(int status) noexcept
{
    return std::binary_search(detail::tolerated.begin(), detail::tolerated.end(), status);
}

/// The status to keep after one more part has been read: the first that is not 0. The mild codes 23 and 24
/// give way to a later one that is not 0.
[[nodiscard]] constexpr int keep(int kept, int next) noexcept
{
    bool const givesWay = kept == ok || ((kept == 23 || kept == 24) && next != ok);
    return givesWay ? next : kept;
}

} // namespace oV::StatusCode
