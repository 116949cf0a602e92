#pragma once

/// @file
/// The status codes of reading and writing models, and the rules for combining them.

#include <algorithm>
#include <array>

/// Status codes of reading and writing. 0 means success. isTolerated() tells which of the others end a read.
namespace oV::StatusCode
{

inline constexpr int ok = 0;            ///< success
inline constexpr int syntaxError = 1;   ///< the text does not follow the grammar of ModelFormat
inline constexpr int unexpectedEnd = 2; ///< the text ends inside a statement, a value or a block
inline constexpr int wrongKind = 3;     ///< a well-formed value of another kind than requested
inline constexpr int outOfRange =
    4; ///< a number or text beyond the range of its type, or a number other than 0 that rounds to 0
inline constexpr int tooDeep = 6;         ///< more than ModelFormat::maxDepth open blocks
inline constexpr int readFailed = 17;     ///< no input stream, or one that failed
inline constexpr int writeFailed = 18;    ///< no output stream, or one that is not good
inline constexpr int unknownKeyword = 23; ///< an unknown keyword was skipped; tolerated
inline constexpr int noContext = 27;      ///< no write context was given

namespace detail
{

inline constexpr std::array tolerated = {0,  5,  12,  23,  24,  30,  31,  34,  42,  43,  50,  51,  52, 54,
                                         57, 87, 122, 124, 162, 209, 216, 268, 269, 274, 277, 279, 280};

} // namespace detail

/// Whether a reader continues after a part that was read with this status.
[[nodiscard]] constexpr bool isTolerated(int status) noexcept
{
    return std::binary_search(detail::tolerated.begin(), detail::tolerated.end(), status);
}

/// Combines the statuses of two parts of a text: the first one that is not 0. The codes 23 and 24 are
/// replaced by a later status that is not 0.
/// @param kept the status of the parts before
/// @param next the status of the next part
[[nodiscard]] constexpr int keep(int kept, int next) noexcept
{
    bool const givesWay = kept == ok || ((kept == 23 || kept == 24) && next != ok);
    return givesWay ? next : kept;
}

} // namespace oV::StatusCode
