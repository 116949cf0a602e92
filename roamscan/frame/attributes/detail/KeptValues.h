#pragma once

#include <roamscan/frame/attributes/detail/StringHash.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/KeptText.h>

#include <cstddef>
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

/// The unknown statements that a container has read, in the order of the text, and the indices of the
/// attributes that this read has set.
class KeptValues
{
public:
    void add(KeptStatement statement)
    {
        std::size_t const place = statements_.size();
        index_[statement.name].push_back(place);
        statements_.emplace_back(std::move(statement));
    }

    /// Removes the first statement for an attribute with this keyword, name and type key. Nothing if there is
    /// none.
    [[nodiscard]] std::optional<KeptText>
    take(Bv_1_1::String const& keyword, Bv_1_1::String const& name, Bv_1_1::String const& typeKey)
    {
        auto const found = index_.find(name);
        if (found == index_.end()) {
            return std::nullopt;
        }
        auto& places = found->second;
        for (auto place = places.begin(); place != places.end(); ++place) {
            std::optional<KeptStatement>& statement = statements_[*place];
            if (statement->keyword == keyword && statement->typeKey == typeKey) {
                std::optional<KeptText> text(std::move(statement->rest));
                statement.reset();
                places.erase(place);
                return text;
            }
        }
        return std::nullopt;
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

    /// Records that the custom attribute at an index has been read. @return false if it was already recorded
    bool noteRead(std::size_t place)
    {
        if (place >= read_.size()) {
            read_.resize(place + 1);
        }
        bool const isFirst = !read_[place];
        read_[place] = true;
        return isFirst;
    }

private:
    std::vector<std::optional<KeptStatement>> statements_;
    std::unordered_map<Bv_1_1::String, std::vector<std::size_t>, StringHash>
        index_; // by the attribute's name
    std::vector<bool> read_;
};

} // namespace oV::detail
