#include <roamscan/frame/formats/DataOutFormat.h>
#include <roamscan/frame/formats/detail/ValueText.h>

#include <string>

namespace oV
{

template <>
void DataOutFormat<bool>::put(bool const& value)
{
    out_.putText(value ? "true" : "false");
}

template <>
void DataOutFormat<int>::put(int const& value)
{
    out_.putText(std::to_string(value));
}

template <>
void DataOutFormat<double>::put(double const& value)
{
    out_.putText(detail::textOfNumber(value));
}

template <>
void DataOutFormat<Bv_1_1::String>::put(Bv_1_1::String const& value)
{
    out_.putText(detail::textOfString(value));
}

template <>
void DataOutFormat<std::vector<Bv_1_1::String>>::put(std::vector<Bv_1_1::String> const& value)
{
    std::string text = "[";
    for (Bv_1_1::String const& element : value) {
        if (text.size() > 1) {
            text += ", ";
        }
        text += detail::textOfString(element);
    }
    out_.putText(text + "]");
}

} // namespace oV
