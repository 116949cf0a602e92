#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

#include <cstddef>
#include <string_view>
#include <unordered_map>

namespace oV
{

/// A two-way table of tokens and names: each token has one name, each name one token.
///
/// Many threads may look up; adding needs the caller's own exclusion.
class ROAMSCAN_EXPORT KeyTable
{
public:
    /// Stands for a name that the table does not have.
    static constexpr unsigned int unknownToken = 0xFFFFFFFF;

    /// A table without entries.
    KeyTable();
    ~KeyTable();
    KeyTable(KeyTable const&) = delete;
    KeyTable& operator=(KeyTable const&) = delete;

    /// Adds an entry.
    /// @return false, with the table unchanged, if the token or the name is in the table already, the name is
    /// NIL, or the token is `unknownToken`
    bool addEntry(unsigned int token, Bv_1_1::String const& name);

    /// The token of a name, `unknownToken` if there is none. The case of letters matters.
    [[nodiscard]] unsigned int keyToToken(Bv_1_1::String const& name) const;

    /// The name of a token, NIL if there is none. Valid as long as the table.
    [[nodiscard]] Bv_1_1::String const& tokenToKey(unsigned int token) const;

private:
    std::unordered_map<unsigned int, Bv_1_1::String> names_;
    std::unordered_map<std::u16string_view, unsigned int> tokens_; // views of the texts in names_
};

} // namespace oV
