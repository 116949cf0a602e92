#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/ModelInFormat.h>
#include <roamscan/frame/platform/Export.h>

#include <optional>
#include <vector>

namespace oV
{

/// Reads values of one type from the input. `T` is `bool`, `int`, `double`, `Bv_1_1::String` or
/// `std::vector<Bv_1_1::String>`.
template <typename T>
class DataInFormat
{
public:
    /// Reads from `in`, which must outlive this object.
    explicit DataInFormat(ModelInFormat& in) noexcept : in_(in) {}

    /// Reads the next value. Integers are also valid for `double`.
    /// @return the value, or nothing if the next token is not a value of type `T`; ModelInFormat::status()
    ///     then has the code of the failure
    [[nodiscard]] std::optional<T> get();

private:
    ModelInFormat& in_;
};

/// @cond specializations, documented at the template
template <>
ROAMSCAN_EXPORT std::optional<bool> DataInFormat<bool>::get();
template <>
ROAMSCAN_EXPORT std::optional<int> DataInFormat<int>::get();
template <>
ROAMSCAN_EXPORT std::optional<double> DataInFormat<double>::get();
template <>
ROAMSCAN_EXPORT std::optional<Bv_1_1::String> DataInFormat<Bv_1_1::String>::get();
template <>
ROAMSCAN_EXPORT std::optional<std::vector<Bv_1_1::String>> DataInFormat<std::vector<Bv_1_1::String>>::get();
/// @endcond

} // namespace oV
