/// @file
/// The objects that are constructed when the library is loaded, in this order, and destroyed in reverse order
/// when it is unloaded. They are in one file because C++ defines the order only within a file.

#include <roamscan/frame/bvbase/CriticalSection.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/StringVal.h>
#include <roamscan/frame/startup/EntryPoint.h>
#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsCont.h>
#include <roamscan/options/RoamscanOptionsJsonMerger.h>
#include <roamscan/options/detail/OptionsListLock.h>
#include <roamscan/time/detail/TickRatio.h>

#include <array>
#include <cmath>

namespace oV::Roamscan
{

namespace
{

constexpr unsigned int spinCount = 4000;

// The class record, and before it the module in which it is registered.
[[maybe_unused]] Bv_1_1::oVClass const* const optionsRecord = RoamscanOptions::Class();

} // namespace

Bv_1_1::SmartPtr<RoamscanOptions> RoamscanOptions::instance;

Bv_1_1::CriticalSection RoamscanOptions::lock(spinCount);

Bv_1_1::CriticalSection detail::optionsListLock(spinCount);

namespace
{

[[maybe_unused]] Bv_1_1::oVClass const* const containerRecord = RoamscanOptionsCont::Class();

} // namespace

std::array<AttrDefinition, RoamscanOptionsCont::definitionCount> RoamscanOptionsCont::attrDefs = {
    {{1, L"OptionsNames", AttrType::Strings, 18},
     {2, L"OptionsTypes", AttrType::Strings, 18},
     {3, Bv_1_1::String::NIL, AttrType::End, 1}}};

Bv_1_1::String const RoamscanOptionsJsonMerger::m_seperator =
    Bv_1_1::String::adopt(Bv_1_1::StringVal::constructUsingCodepage({0, "."}, -1, -1));

int const TimeConversion::detail::integerTicksPerTxmTick = static_cast<int>(std::round(100.0));

#if !defined(_WIN32)
namespace
{

/// Calls the entry point after the objects above are made and before they are released, as the platform's
/// loader does on Windows.
class Attachment
{
public:
    Attachment() noexcept { entryPoint(this, EntryReason::ProcessAttach); }
    Attachment(Attachment const&) = delete;
    Attachment& operator=(Attachment const&) = delete;
    ~Attachment() { entryPoint(this, EntryReason::ProcessDetach); }
};

Attachment const attachment;

} // namespace
#endif

} // namespace oV::Roamscan
