#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace oV::Roamscan::tool
{

/// The type of a number in a record.
enum class FieldType : std::uint8_t
{
    Int8,
    UInt8,
    Int16,
    UInt16,
    Int32,
    UInt32,
    Int64,
    UInt64,
    Float,
    Double
};

/// Calls `work` with a zero of the C++ type that belongs to a field type.
template <typename Work>
decltype(auto) withType(FieldType type, Work&& work)
{
    switch (type) {
    case FieldType::Int8:
        return work(std::int8_t{});
    case FieldType::UInt8:
        return work(std::uint8_t{});
    case FieldType::Int16:
        return work(std::int16_t{});
    case FieldType::UInt16:
        return work(std::uint16_t{});
    case FieldType::Int32:
        return work(std::int32_t{});
    case FieldType::UInt32:
        return work(std::uint32_t{});
    case FieldType::Int64:
        return work(std::int64_t{});
    case FieldType::UInt64:
        return work(std::uint64_t{});
    case FieldType::Float:
        return work(float{});
    case FieldType::Double:
        break;
    }
    return work(double{});
}

/// The bytes of a number of this type.
[[nodiscard]] inline std::size_t sizeOf(FieldType type)
{
    return withType(type, [](auto zero) { return sizeof(zero); });
}

[[nodiscard]] constexpr bool isFloating(FieldType type)
{
    return type == FieldType::Float || type == FieldType::Double;
}

/// The number stored at `bytes`, in the byte order of the platform, without regard to alignment.
template <typename Number>
[[nodiscard]] Number load(char const* bytes)
{
    static_assert(std::is_arithmetic_v<Number>);
    Number number;
    std::memcpy(&number, bytes, sizeof(number));
    return number;
}

/// Stores a number at `bytes`, in the byte order of the platform, without regard to alignment.
template <typename Number>
void store(char* bytes, Number number)
{
    static_assert(std::is_arithmetic_v<Number>);
    std::memcpy(bytes, &number, sizeof(number));
}

} // namespace oV::Roamscan::tool
