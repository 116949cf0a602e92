#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

#include <cstddef>
#include <string_view>
#include <unordered_map>

namespace oV
{

/// A bidirectional table of tokens (numbers) and names: each token has one name, and each name has one token.
///
/// Thread safety: concurrent lookups are safe; adding needs exclusive access.
class ROAMSCAN_EXPORT KeyTable
{
public:
    /// The result for a name that is not in the table.
    static constexpr unsigned int unknownToken = 0xFFFFFFFF;

    /// A table without entries.
    KeyTable();
    ~KeyTable();
    KeyTable(KeyTable const&) = delete;
    KeyTable& operator=(KeyTable const&) = delete;

    /// Adds an entry.
    /// @return false if the table already has the token or the name, or if the name is NIL or the token is
    ///     `unknownToken`; the table is then unchanged
    bool addEntry(unsigned int token, Bv_1_1::String const& name);

    /// The token of a name, or `unknownToken`. Case-sensitive.
    [[nodiscard]] unsigned int keyToToken(Bv_1_1::String const& name) const;

    /// The name of a token, or NIL. The reference is valid as long as the table.
    [[nodiscard]] Bv_1_1::String const& tokenToKey(unsigned int token) const;

private:
    std::unordered_map<unsigned int, Bv_1_1::String> names_;
    std::unordered_map<std::u16string_view, unsigned int> tokens_; // views of the texts in names_
};

} // namespace oV
