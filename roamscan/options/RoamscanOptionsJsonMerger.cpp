#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptionsJsonMerger.h>

#include <cstdint>
#include <utility>

namespace oV::Roamscan
{

using Bv_1_1::String;
using JSON = RoamscanOptionsJsonMerger::JSON;

namespace
{

/// The option's value if it was set on purpose, else `value`, which the option then has as well.
template <typename T>
T merged(String const& key, T const& value)
{
    bool isWeak = false;
    T const option = getOption<T>(key, value, true, &isWeak);
    return isWeak ? setOption<T>(key, value) : option;
}

/// Copies before it replaces: `source` may be a part of `node`.
JSON& writeCopy(JSON& node, JSON const& source)
{
    JSON copy = source;
    return node = std::move(copy);
}

} // namespace

RoamscanOptionsJsonMerger::RoamscanOptionsJsonMerger(String const& prefix, JSON json)
    : m_prefix(prefix), m_json(std::move(json))
{}

RoamscanOptionsJsonMerger::RoamscanOptionsJsonMerger(RoamscanOptionsJsonMerger const& other) = default;

// NOLINTBEGIN(performance-move-constructor-init): the prefix is shared, the source keeps it
RoamscanOptionsJsonMerger::RoamscanOptionsJsonMerger(RoamscanOptionsJsonMerger&& other) noexcept
    : m_prefix(other.m_prefix), m_json(std::move(other.m_json))
{}
// NOLINTEND(performance-move-constructor-init)

RoamscanOptionsJsonMerger::~RoamscanOptionsJsonMerger() = default;

RoamscanOptionsJsonMerger::JsonWrapper
RoamscanOptionsJsonMerger::operator[](std::vector<std::string> const& path)
{
    String key = m_prefix;
    JSON* node = &m_json;
    for (std::string const& element : path) {
        key << m_seperator << String::fromNarrow(element.c_str());
        node = &(*node)[element]; // makes an object of null, and refuses what is no object
    }
    return {*node, std::move(key)};
}

RoamscanOptionsJsonMerger::JsonWrapper::JsonWrapper(JSON& node, String key) noexcept
    : m_node(node), m_key(std::move(key))
{}

RoamscanOptionsJsonMerger::JsonWrapper::JsonWrapper(JsonWrapper const& other) noexcept = default;

RoamscanOptionsJsonMerger::JsonWrapper::~JsonWrapper() = default;

JSON& RoamscanOptionsJsonMerger::JsonWrapper::operator=(int value)
{
    return m_node = merged<int>(m_key, value);
}

JSON& RoamscanOptionsJsonMerger::JsonWrapper::operator=(unsigned int value)
{
    return m_node = static_cast<std::uint32_t>(merged<int>(m_key, static_cast<int>(value)));
}

JSON& RoamscanOptionsJsonMerger::JsonWrapper::operator=(double value)
{
    return m_node = merged<double>(m_key, value);
}

JSON& RoamscanOptionsJsonMerger::JsonWrapper::operator=(bool value)
{
    return m_node = merged<bool>(m_key, value);
}

JSON& RoamscanOptionsJsonMerger::JsonWrapper::operator=(char const* value)
{
    return m_node = merged<String>(m_key, String::fromNarrow(value)).stringAnsi();
}

JSON& RoamscanOptionsJsonMerger::JsonWrapper::operator=(std::string value)
{
    return *this = value.c_str();
}

JSON& RoamscanOptionsJsonMerger::JsonWrapper::operator=(std::vector<double> value)
{
    return m_node = std::move(value);
}

JSON& RoamscanOptionsJsonMerger::JsonWrapper::operator=(JSON& value)
{
    return writeCopy(m_node, value);
}

JSON& RoamscanOptionsJsonMerger::JsonWrapper::operator=(JsonWrapper& other)
{
    return writeCopy(m_node, other.m_node);
}

} // namespace oV::Roamscan
