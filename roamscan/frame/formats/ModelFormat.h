#pragma once

#include <string_view>

namespace oV
{

/// What the two text forms of the model formats have in common, and their grammar.
///
/// Both forms are UTF-8. The keyed form names each value; a person can read and edit it. The bare form holds
/// the same values in the order in which they were written, without keywords; reader and writer must agree on
/// that order. A value has the same text in both forms.
///
/// Grammar of the keyed form. Blank space (space, tab, CR, LF) may stand between any two tokens and is needed
/// only between two words. `*` is any number of times, `+` at least once, `?` at most once, `|` is or.
///
/// @code{.unparsed}
/// text       statement*
/// statement  keyword value* ";"   |   keyword value* "{" statement* "}"
/// keyword    [A-Za-z_][A-Za-z0-9_]*   |   string (neither empty nor "}")
/// value      bool | number | string | "null" | list
/// bool       "true" | "false"
/// number     decimal, such as -12, 0.1, 1e+22   |   "inf" | "-inf" | "nan" | "nan:" hex{16}
/// string     '"' character* '"'
/// character  any code point except '"', '\' and the control characters below U+0020
///            | \" | \\ | \n | \r | \t | \uXXXX (one UTF-16 unit in four hexadecimal digits)
/// list       "[" "]"   |   "[" element ("," element)* "]"
/// element    bool | number | string | "null"
/// @endcode
///
/// Grammar of the bare form:
///
///     text       item*
///     item       value   |   "{" item* "}"
///
/// What the writer writes, byte for byte:
///
/// - Keyed form: each statement begins a line, indented by four spaces for each open block. One space
///   precedes each value and each "{". ";", "{" and "}" end the line with LF. A keyword that has the form
///   of a word is written as a word, any other one as a string.
/// - Bare form: each value, "{" and "}" has a line of its own that ends with LF, without indentation.
/// - Numbers: the shortest decimal text that reads back to the same bits; -0.0 is "-0". The quiet NaN
///   without payload and sign is "nan"; any other NaN is "nan:" and its bits in lower-case digits.
/// - Strings: the null string is `null`. Double quote, backslash, LF, CR and TAB have their short
///   escapes. Other control characters (U+0000 to U+001F, U+007F to U+009F), U+2028, U+2029, U+FEFF and
///   lone surrogates are written as a `u` escape in lower-case digits. Everything else stands as it is.
/// - Lists: `["a", null]`, `[]`.
///
/// A container with two attributes in the keyed form:
///
/// @code{.unparsed}
/// attribute "ShowDebug2DWindow" "bool" {
///     value true;
/// }
/// attribute "Title" "String" {
///     value "a \"quoted\" word";
/// }
/// @endcode
///
/// Blocks nest up to `maxDepth` levels.
class ModelFormat
{
public:
    /// The form of a text. Every value other than Bare stands for the keyed form.
    enum class Format : int
    {
        Keyed = 0, ///< with keywords
        Bare = 1,  ///< without keywords
    };

    /// Ends a block. As a keyword of one character it is what a reader finds at the end of a block.
    static constexpr wchar_t END_OF_BLOCK = L'}'; // NOLINT(readability-identifier-naming): the host's name

    /// The keyword of an attribute's value. Readers of the bare form find it in front of the value, too.
    static constexpr wchar_t const* valueKeyword = L"value";

    /// Greatest number of blocks that may be open at once.
    static constexpr int maxDepth = 100;

    ModelFormat() = delete;
};

} // namespace oV
