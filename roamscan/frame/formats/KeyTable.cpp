#include <roamscan/frame/formats/KeyTable.h>

namespace oV
{

KeyTable::KeyTable() = default;

KeyTable::~KeyTable() = default;

bool KeyTable::addEntry(unsigned int token, Bv_1_1::String const& name)
{
    if (token == unknownToken || name.isNil() || names_.contains(token) || tokens_.contains(name.text())) {
        return false;
    }
    auto const entry = names_.emplace(token, name).first;
    try {
        tokens_.emplace(entry->second.text(), token);
    } catch (...) {
        names_.erase(entry);
        throw;
    }
    return true;
}

unsigned int KeyTable::keyToToken(Bv_1_1::String const& name) const
{
    if (name.isNil()) {
        return unknownToken;
    }
    auto const entry = tokens_.find(name.text());
    return entry == tokens_.end() ? unknownToken : entry->second;
}

Bv_1_1::String const& KeyTable::tokenToKey(unsigned int token) const
{
    auto const entry = names_.find(token);
    return entry == names_.end() ? Bv_1_1::String::NIL : entry->second;
}

} // namespace oV
