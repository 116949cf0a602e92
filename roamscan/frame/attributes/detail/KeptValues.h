#pragma once

#include <roamscan/frame/attributes/detail/StringHash.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/KeptText.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace oV::detail
{

/// A statement of a container's text that belongs to no attribute of the container.
struct KeptStatement
{
    Bv_1_1::String keyword;
    Bv_1_1::String name;    ///< of the attribute; NIL for a statement of another kind
    Bv_1_1::String typeKey; ///< of the attribute; NIL for a statement of another kind
    KeptText rest;
};

/// The unknown statements that a container has read, in the order of the text.
class KeptValues
{
public:
    void add(KeptStatement statement)
    {
        std::size_t const place = statements_.size();
        index_[statement.name].push_back(place);
        statements_.emplace_back(std::move(statement));
    }

    /// Whether there is a statement for an attribute with this keyword, name and type key.
    [[nodiscard]] bool
    has(Bv_1_1::String const& keyword, Bv_1_1::String const& name, Bv_1_1::String const& typeKey) const
    {
        return find(keyword, name, typeKey) != none;
    }

    /// Removes the first statement for an attribute with this keyword, name and type key. Nothing if there is
    /// none.
    [[nodiscard]] std::optional<KeptText>
    take(Bv_1_1::String const& keyword, Bv_1_1::String const& name, Bv_1_1::String const& typeKey)
    {
        std::size_t const place = find(keyword, name, typeKey);
        if (place == none) {
            return std::nullopt;
        }
        std::optional<KeptText> text(std::move(statements_[place]->rest));
        statements_[place].reset();
        std::erase(index_[name], place);
        return text;
    }

    /// Calls `call(KeptStatement const&)` for each statement, in order.
    template <typename Call>
    void visit(Call const& call) const
    {
        for (auto const& statement : statements_) {
            if (statement) {
                call(*statement);
            }
        }
    }

private:
    static constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

    [[nodiscard]] std::size_t
    find(Bv_1_1::String const& keyword, Bv_1_1::String const& name, Bv_1_1::String const& typeKey) const
    {
        auto const found = index_.find(name);
        if (found == index_.end()) {
            return none;
        }
        auto const isWanted = [&](std::size_t place) {
            return statements_[place]->keyword == keyword && statements_[place]->typeKey == typeKey;
        };
        auto const place = std::find_if(found->second.begin(), found->second.end(), isWanted);
        return place == found->second.end() ? none : *place;
    }

    std::vector<std::optional<KeptStatement>> statements_;
    std::unordered_map<Bv_1_1::String, std::vector<std::size_t>, StringHash>
        index_; // by the attribute's name
};

} // namespace oV::detail
