#include "tests/frame/startup/StartupPlugin.h"

#include "tests/support/OptionsPrivates.h"

#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptionsCont.h>
#include <roamscan/options/RoamscanOptionsHost.h>
#include <roamscan/time/TimeConversion.h>

#include <algorithm>
#include <string_view>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace
{

using Bv_1_1::String;
using oV::Roamscan::getOption;
using oV::Roamscan::RoamscanOptionsCont;
using oV::Roamscan::setOption;

bool hasClassRecord(std::wstring_view name)
{
    auto const records = Bv_1_1::Module::library().classes();
    return std::any_of(
        records.begin(), records.end(), [name](auto* record) { return record->name() == name; });
}

} // namespace

bool isFreshlyLoaded()
{
    _ULARGE_INTEGER sevenMicroseconds;
    sevenMicroseconds.QuadPart = 7;
    return Bv_1_1::Module::library().isAttached() && hasClassRecord(L"RoamscanOptions") &&
           hasClassRecord(L"RoamscanOptionsCont") && !support::areOptionsAvailable() &&
           getOption<int>(L"Plugin.steps", 3) == 3 &&
           oV::Roamscan::TimeConversion::convertTxmTimeToIntegerTime(sevenMicroseconds) == 700;
}

bool bringUpOptions()
{
    constexpr auto fresh = Bv_1_1::BaseNode::CreateType::Fresh;
    Bv_1_1::SmartPtr<RoamscanOptionsCont> const options(new RoamscanOptionsCont(fresh, nullptr));
    options->init(fresh, nullptr);
    oV::Roamscan::RoamscanOptionsHost::setup(options.get());
    setOption<int>(L"Plugin.steps", 4);
    setOption<String>(L"Plugin.name", L"north");
    return support::areOptionsAvailable() && getOption<int>(L"Plugin.steps", 3) == 4 &&
           getOption<String>(L"Plugin.name", String::EMPTY) == L"north";
}
