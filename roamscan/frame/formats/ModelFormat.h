#pragma once

#include <string_view>

namespace oV
{

/// The grammar and the constants of the model formats, which are two text forms for attributes and their
/// containers. Read with ReadFromScope and ModelInFormat, write with WriteToScope and ModelOutFormat.
///
/// Both forms are UTF-8. The keyed form has a keyword for each value and is easy to read and edit. The bare
/// form has the same values in the order in which they were written, without keywords; reader and writer must
/// agree on that order. A value has the same text in both forms.
///
/// Grammar of the keyed form. Blank space (space, tab, CR, LF) is allowed between any two tokens, and
/// required between two words. `*` means any number of times, and `|` separates alternatives.
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
/// The exact output of the writer:
///
/// - Keyed form: each statement starts a new line, indented by four spaces for each open block. One space
///   precedes each value and each "{". ";", "{" and "}" end the line with LF. A keyword is written as a word
///   if the grammar allows it, otherwise as a string.
/// - Bare form: each value, "{" and "}" is on its own line, which ends with LF, without indentation.
/// - Numbers: the shortest decimal text that parses to the same bits; -0.0 is "-0". The quiet NaN
///   without payload and sign is "nan"; any other NaN is "nan:" and its bits in lower-case digits.
/// - Strings: the null string is `null`. Double quote, backslash, LF, CR and TAB have their short
/// escapes. Other control characters (U+0000 to U+001F, U+007F to U+009F), U+2028, U+2029, U+FEFF and
/// unpaired surrogates are written as a `u` escape in lower-case digits. All other characters are unchanged.
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
    /// The form of a text. Every value other than Bare denotes the keyed form.
    enum class Format : int
    {
        Keyed = 0, ///< with keywords
        Bare = 1,  ///< without keywords
    };

    /// The character that ends a block. A reader gets it as a keyword of one character.
    static constexpr wchar_t END_OF_BLOCK = L'}'; // NOLINT(readability-identifier-naming): the host's name

    /// The keyword of an attribute's value. Readers of the bare form also get it, although it is not in the
    /// text.
    static constexpr wchar_t const* valueKeyword = L"value";

    /// The largest depth of nested blocks.
    static constexpr int maxDepth = 100;

    ModelFormat() = delete;
};

} // namespace oV
