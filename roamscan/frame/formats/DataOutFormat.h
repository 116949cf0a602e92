#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/ModelOutFormat.h>
#include <roamscan/frame/platform/Export.h>

#include <vector>

namespace oV
{

/// Writes values of one type to the output. `T` is `bool`, `int`, `double`, `Bv_1_1::String` or
/// `std::vector<Bv_1_1::String>`. DataInFormat reads back the same value; a `double` is the same bit for bit.
template <typename T>
class DataOutFormat
{
public:
    /// Writes to `out`, which must outlive this object.
    explicit DataOutFormat(ModelOutFormat& out) noexcept : out_(out) {}

    /// Writes one value.
    void put(T const& value);

private:
    ModelOutFormat& out_;
};

/// @cond specializations, documented at the template
template <>
ROAMSCAN_EXPORT void DataOutFormat<bool>::put(bool const& value);
template <>
ROAMSCAN_EXPORT void DataOutFormat<int>::put(int const& value);
template <>
ROAMSCAN_EXPORT void DataOutFormat<double>::put(double const& value);
template <>
ROAMSCAN_EXPORT void DataOutFormat<Bv_1_1::String>::put(Bv_1_1::String const& value);
template <>
ROAMSCAN_EXPORT void
DataOutFormat<std::vector<Bv_1_1::String>>::put(std::vector<Bv_1_1::String> const& value);
/// @endcond

} // namespace oV
