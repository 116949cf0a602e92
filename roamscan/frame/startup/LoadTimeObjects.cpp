/// @file
/// The objects that are constructed when the library is loaded, in this order, and released in reverse order
/// when it is unloaded. They are in one file because C++ defines the order only within a file. No other file
/// has any.

#include <roamscan/frame/bvbase/CriticalSection.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/StringVal.h>
#include <roamscan/frame/startup/EntryPoint.h>
#include <roamscan/frame/startup/LoadTimeObjects.h>
#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsCont.h>
#include <roamscan/options/RoamscanOptionsJsonMerger.h>
#include <roamscan/options/detail/OptionsListLock.h>
#include <roamscan/time/detail/TickRatio.h>

#include <array>
#include <cmath>
#include <cstddef>

namespace oV::Roamscan
{

namespace
{

constexpr unsigned int spinCount = 4000;

// 1. The class record, and before it the module in which it is registered.
[[maybe_unused]] Bv_1_1::oVClass const* const optionsRecord = RoamscanOptions::Class();

} // namespace

// 2. Released after both locks: the destructors of the singleton and of the container take no lock.
Bv_1_1::SmartPtr<RoamscanOptions> RoamscanOptions::instance;

// 3.
Bv_1_1::CriticalSection RoamscanOptions::lock(spinCount);

// 4.
Bv_1_1::CriticalSection detail::optionsListLock(spinCount);

namespace
{

// 5. Its destructor calls RoamscanOptionsCont::clearStatics().
[[maybe_unused]] Bv_1_1::oVClass const* const containerRecord = RoamscanOptionsCont::Class();

} // namespace

// 6.
std::array<AttrDefinition, RoamscanOptionsCont::definitionCount> RoamscanOptionsCont::attrDefs = {
    {{1, L"OptionsNames", AttrType::Strings, 18},
     {2, L"OptionsTypes", AttrType::Strings, 18},
     {3, Bv_1_1::String::NIL, AttrType::End, 1}}};

// 7.
Bv_1_1::String const RoamscanOptionsJsonMerger::m_seperator =
    Bv_1_1::String::adopt(Bv_1_1::StringVal::constructUsingCodepage({0, "."}, -1, -1));

// 8.
int const TimeConversion::detail::integerTicksPerTxmTick = static_cast<int>(std::round(100.0));

// 9.
Bv_1_1::String const startup::roamText(L"ROAM");

namespace
{

std::array<double, 8192> makeScaleTable()
{
    std::array<double, 8192> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        std::size_t const a = i % 128;
        std::size_t const b = i / 128;
        auto x = static_cast<double>(a);
        auto y = static_cast<double>(b);
        if (x + y >= 127.0) {
            x = 127.0 - x;
            y = 127.0 - y;
        }
        double const z = 126.0 - x - y;
        table[i] = 1.0 / std::sqrt(x * x + y * y + z * z);
    }
    return table;
}

} // namespace

// 10.
std::array<double, 8192> const startup::scaleTable = makeScaleTable();

#if !defined(_WIN32)
namespace
{

/// Calls the entry point after the objects above are made and before they are released, as the platform's
/// loader does on Windows.
class Attachment
{
public:
    // The result is ignored: only on Windows can a library refuse to be loaded.
    Attachment() noexcept { entryPoint(this, EntryReason::ProcessAttach, nullptr); }
    Attachment(Attachment const&) = delete;
    Attachment& operator=(Attachment const&) = delete;
    ~Attachment() { entryPoint(this, EntryReason::ProcessDetach, nullptr); }
};

Attachment const attachment;

} // namespace
#endif

} // namespace oV::Roamscan
