#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace oV::Roamscan
{

/// Builds the JSON document of a plug-in's settings, in which deliberate options have the last word.
///
/// The plug-in writes its defaults into the document by path. Each of them also passes through the option
/// whose name is the prefix and the path, joined by dots. An option that was set on purpose replaces the
/// default in the document; otherwise the default becomes the option's value, with the weak-value mark.
/// @code
/// RoamscanOptionsJsonMerger settings(L"Denoise", nlohmann::json::object());
/// settings[{"filter", "radius"}] = 0.05; // option "Denoise.filter.radius"
/// auto const radius = settings.get()["filter"]["radius"].get<double>();
/// @endcode
///
/// One merger is for one thread at a time. Several mergers may be used on different threads, also on the same
/// options.
class ROAMSCAN_EXPORT RoamscanOptionsJsonMerger
{
public:
    using JSON = nlohmann::json;

    class JsonWrapper;

    /// @param prefix the leading part of every option's name; any text
    /// @param json   the document to begin with; null is as good as an empty object
    RoamscanOptionsJsonMerger(Bv_1_1::String const& prefix, JSON json);
    /// The copy has a document of its own.
    RoamscanOptionsJsonMerger(RoamscanOptionsJsonMerger const& other);
    /// Leaves `other` with a null document; its prefix stays.
    RoamscanOptionsJsonMerger(RoamscanOptionsJsonMerger&& other) noexcept;
    RoamscanOptionsJsonMerger& operator=(RoamscanOptionsJsonMerger const&) = delete;
    RoamscanOptionsJsonMerger& operator=(RoamscanOptionsJsonMerger&&) = delete;
    ~RoamscanOptionsJsonMerger();

    /// The place in the document that the path leads to from its root. A null on the way becomes an object,
    /// and missing members are inserted as null. An empty path is the root, with the prefix as the name.
    /// @throws nlohmann::json::type_error 305 if the path leads through a value that is neither an object nor
    /// null. Members that were inserted before stay.
    /// @warning Neither the prefix nor the elements are checked: an element with a dot gives the same option
    /// name as a longer path.
    [[nodiscard]] JsonWrapper operator[](std::vector<std::string> const& path);

    /// The document itself.
    [[nodiscard]] JSON& get() noexcept { return m_json; }

private:
    // The order and the spelling of the members are part of the binary interface.
    static Bv_1_1::String const m_seperator;

    Bv_1_1::String m_prefix;
    JSON m_json;
};

/// One place in the document of a merger, and the option that belongs to it. Assign to it to write there.
///
/// It must not outlive its merger. A change of the document that moves the place, such as the removal of a
/// member above it, invalidates it.
class ROAMSCAN_EXPORT RoamscanOptionsJsonMerger::JsonWrapper
{
public:
    /// @param node the place, which is borrowed
    /// @param key  the name of the option
    JsonWrapper(JSON& node, Bv_1_1::String key) noexcept;
    /// The same place.
    JsonWrapper(JsonWrapper const& other) noexcept;
    ~JsonWrapper();

    /// Merges the value with the option of the place's name and writes the outcome: the option's own value if
    /// it was set on purpose, `value` otherwise. The option's type is `int`; what the place held is replaced.
    /// @return the place
    JSON& operator=(int value);
    /// As for `int`, and with the same type of option: the 32 bits of the number are kept.
    JSON& operator=(unsigned int value);
    /// @overload
    JSON& operator=(double value);
    /// @overload
    JSON& operator=(bool value);
    /// Null stands for Bv_1_1::String::NIL. The document gets the narrow text of the outcome.
    JSON& operator=(char const* value);
    /// @overload
    JSON& operator=(std::string value);

    /// Writes an array of numbers.
    /// @note No option can change it, and none is created.
    JSON& operator=(std::vector<double> value);
    /// Writes a copy of the whole value.
    /// @note No option can change it, and none is created.
    JSON& operator=(JSON& value);
    /// Writes a copy of what stands at the other place.
    /// @note No option can change it, and none is created.
    JSON& operator=(JsonWrapper& other);

private:
    // The order of the members is part of the binary interface.
    JSON& m_node;
    Bv_1_1::String m_key;
};

} // namespace oV::Roamscan
