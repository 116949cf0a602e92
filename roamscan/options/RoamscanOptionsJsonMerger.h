#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace oV::Roamscan
{

/// Builds the JSON document of a plug-in's settings. Options that were set explicitly override the plug-in's
/// defaults.
///
/// The plug-in assigns its defaults to paths of the document. Each path has an option, whose name is the
/// prefix and the elements of the path, joined by dots. If that option has an explicit value, the document
/// gets this value. Otherwise the document gets the default, which also becomes the value of the option, as a
/// weak value.
/// @code
/// RoamscanOptionsJsonMerger settings(L"Denoise", nlohmann::json::object());
/// settings[{"filter", "radius"}] = 0.05; // option "Denoise.filter.radius"
/// auto const radius = settings.get()["filter"]["radius"].get<double>();
/// @endcode
///
/// Thread safety: all use of a merger needs exclusive access. Different mergers may be used concurrently,
/// also with the same options.
class ROAMSCAN_EXPORT RoamscanOptionsJsonMerger
{
public:
    /// The type of the document.
    using JSON = nlohmann::json;

    class JsonWrapper;

    /// @param prefix the first part of the name of every option; any text
    /// @param json the initial document, usually null or an object
    RoamscanOptionsJsonMerger(Bv_1_1::String const& prefix, JSON json);
    /// The copy has its own document.
    RoamscanOptionsJsonMerger(RoamscanOptionsJsonMerger const& other);
    /// Leaves `other` with a null document; its prefix stays.
    RoamscanOptionsJsonMerger(RoamscanOptionsJsonMerger&& other) noexcept;
    RoamscanOptionsJsonMerger& operator=(RoamscanOptionsJsonMerger const&) = delete;
    RoamscanOptionsJsonMerger& operator=(RoamscanOptionsJsonMerger&&) = delete;
    ~RoamscanOptionsJsonMerger();

    /// The element of the document at a path. Along the path, null values become objects, and missing members
    /// are inserted as null.
    /// @param path the names of the members, from the root; the empty path denotes the root, whose option has
    ///     the prefix as its name
    /// @throws nlohmann::json::type_error with id 305 if a value along the path is neither an object nor
    ///     null; members that were inserted before are kept
    /// @warning Prefix and elements are not checked. An element with a dot gives the same option name as a
    ///     longer path.
    [[nodiscard]] JsonWrapper operator[](std::vector<std::string> const& path);

    /// The document itself.
    [[nodiscard]] JSON& get() noexcept { return m_json; }

private:
    // The order and the spelling of the members are part of the binary interface.
    // NOLINTNEXTLINE(readability-identifier-naming): see above
    static Bv_1_1::String const m_seperator;

    Bv_1_1::String m_prefix;
    JSON m_json;
};

/// A reference to one element of a merger's document, and the name of its option. Assign to it to set the
/// element.
///
/// It must not outlive its merger. Changes of the document that move or remove the element invalidate it.
class ROAMSCAN_EXPORT RoamscanOptionsJsonMerger::JsonWrapper
{
public:
    /// @param node the element; must outlive this object
    /// @param key  the name of the option
    JsonWrapper(JSON& node, Bv_1_1::String key) noexcept;
    /// Refers to the same element.
    JsonWrapper(JsonWrapper const& other) noexcept;
    ~JsonWrapper();

    /// Merges the value with the option and assigns the result to the element: the option's value if it was
    /// set explicitly, otherwise `value`. The type of the option is `int`. A previous value of the element is
    /// replaced.
    /// @return the element
    JSON& operator=(int value);
    /// The same, also with an option of type `int`, which has the same 32 bits as the unsigned number.
    JSON& operator=(unsigned int value);
    /// @overload
    JSON& operator=(double value);
    /// @overload
    JSON& operator=(bool value);
    /// The same with an option of type Bv_1_1::String. Null is converted to NIL. The document gets the narrow
    /// text of the result.
    JSON& operator=(char const* value);
    /// @overload
    JSON& operator=(std::string value);

    /// Assigns an array of numbers.
    /// @note No option can change it, and none is created.
    JSON& operator=(std::vector<double> value);
    /// Assigns a copy of the whole value.
    /// @note No option can change it, and none is created.
    JSON& operator=(JSON& value);
    /// Assigns a copy of the other element.
    /// @note No option can change it, and none is created.
    JSON& operator=(JsonWrapper& other);

private:
    // The order of the members is part of the binary interface.
    JSON& m_node;
    Bv_1_1::String m_key;
};

} // namespace oV::Roamscan
