#pragma once

#include <roamscan/frame/attributes/Attribute.h>
#include <roamscan/frame/attributes/detail/StringHash.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>

#include <cstddef>
#include <limits>
#include <unordered_map>
#include <vector>

namespace oV::detail
{

/// The custom attributes of a container in the order in which they were added, with an index by name.
class CustomAttributes
{
public:
    /// The index that denotes no attribute.
    static constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

    [[nodiscard]] std::size_t size() const noexcept { return entries_.size(); }
    [[nodiscard]] Attribute* at(std::size_t place) const noexcept { return entries_[place].attribute.get(); }

    /// The first index with this name, or `none`.
    [[nodiscard]] std::size_t find(Bv_1_1::String const& name) const
    {
        auto const found = index_.find(name);
        return found == index_.end() ? none : found->second.first;
    }

    /// The next index with the same name, or `none`.
    [[nodiscard]] std::size_t next(std::size_t place) const noexcept { return entries_[place].next; }

    /// Appends an attribute. If it throws, nothing has changed.
    void add(Attribute* attribute, Bv_1_1::String const& name)
    {
        std::size_t const place = entries_.size();
        entries_.push_back({Bv_1_1::SmartPtr<Attribute>(attribute), none});
        try {
            auto const [entry, isNew] = index_.try_emplace(name, SameName{place, place});
            if (!isNew) {
                entries_[entry->second.last].next = place;
                entry->second.last = place;
            }
        } catch (...) {
            entries_.pop_back();
            throw;
        }
    }

private:
    struct Entry
    {
        Bv_1_1::SmartPtr<Attribute> attribute;
        std::size_t next; // with the same name
    };
    struct SameName
    {
        std::size_t first;
        std::size_t last;
    };

    std::vector<Entry> entries_;
    std::unordered_map<Bv_1_1::String, SameName, StringHash> index_;
};

} // namespace oV::detail
