/// @file
/// The objects that are constructed when the library is loaded, in this order, and released in reverse order
/// when it is unloaded. They are in one file because C++ defines the order only within a file. No other file
/// has any.
///
/// In a program that links the static library, they also precede the namespace-scope objects of the program,
/// as they do if the library is shared.

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

#if !defined(ROAMSCAN_STATIC) || defined(__APPLE__)
#define ROAMSCAN_AT_LOAD
#elif defined(_MSC_VER)
#define ROAMSCAN_AT_LOAD
#pragma warning(disable : 4073) // the next line is intended
#pragma init_seg(lib)
#else
#define ROAMSCAN_AT_LOAD [[gnu::init_priority(101)]]
#endif

namespace oV::Roamscan
{

namespace
{

constexpr unsigned int spinCount = 4000;

/// A class record that is constructed at load. It is a class because pointers have no priority.
struct RecordAtLoad
{
    Bv_1_1::oVClass const* record;
};

// 1. The class record, and before it the module in which it is registered.
[[maybe_unused]] ROAMSCAN_AT_LOAD RecordAtLoad const optionsRecord{RoamscanOptions::Class()};

} // namespace

// 2. Released after both locks: the destructors of the singleton and of the container take no lock.
ROAMSCAN_AT_LOAD Bv_1_1::SmartPtr<RoamscanOptions> RoamscanOptions::instance;

// 3.
ROAMSCAN_AT_LOAD Bv_1_1::CriticalSection RoamscanOptions::lock(spinCount);

// 4.
ROAMSCAN_AT_LOAD Bv_1_1::CriticalSection detail::optionsListLock(spinCount);

namespace
{

// 5. Its destructor calls RoamscanOptionsCont::clearStatics().
[[maybe_unused]] ROAMSCAN_AT_LOAD RecordAtLoad const containerRecord{RoamscanOptionsCont::Class()};

} // namespace

// 6.
ROAMSCAN_AT_LOAD std::array<AttrDefinition, RoamscanOptionsCont::definitionCount>
    RoamscanOptionsCont::attrDefs = {{{1, L"OptionsNames", AttrType::Strings, 18},
                                      {2, L"OptionsTypes", AttrType::Strings, 18},
                                      {3, Bv_1_1::String::NIL, AttrType::End, 1}}};

// 7.
ROAMSCAN_AT_LOAD Bv_1_1::String const RoamscanOptionsJsonMerger::m_seperator =
    Bv_1_1::String::adopt(Bv_1_1::StringVal::constructUsingCodepage({0, "."}, -1, -1));

// 8.
int const TimeConversion::detail::integerTicksPerTxmTick = static_cast<int>(std::round(100.0));

// 9.
ROAMSCAN_AT_LOAD Bv_1_1::String const startup::roamText(L"ROAM");

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
ROAMSCAN_AT_LOAD std::array<double, 8192> const startup::scaleTable = makeScaleTable();

#if !defined(_WIN32) || defined(ROAMSCAN_STATIC)
namespace
{

/// Calls the entry point after the objects above are made and before they are released, as the loader does
/// for a shared library on Windows.
class Attachment
{
public:
    // The result is ignored: only a shared library on Windows can refuse to be loaded.
    Attachment() noexcept
    {
        entryPoint(reinterpret_cast<ImageHandle>(this), EntryReason::ProcessAttach, nullptr);
    }
    Attachment(Attachment const&) = delete;
    Attachment& operator=(Attachment const&) = delete;
    ~Attachment() { entryPoint(nullptr, EntryReason::ProcessDetach, nullptr); }
};

ROAMSCAN_AT_LOAD Attachment const attachment;

} // namespace
#endif

} // namespace oV::Roamscan

#if defined(ROAMSCAN_STATIC)
/// The linker option of the static library names it, so that every program that links the library has the
/// objects of this file.
extern "C" {
extern char const roamscanLoadTimeObjects;
constinit char const roamscanLoadTimeObjects = 0;
}
#endif
