/// @file
/// For a program that links the library's objects: attaches the module before the tests, as the loader does
/// for the shared library. Elsewhere than on Windows, the load-time objects do so.

#include <gtest/gtest.h>

#if defined(_WIN32)
#include <roamscan/frame/startup/EntryPoint.h>

#include <windows.h>

namespace
{

using oV::Roamscan::entryPoint;
using oV::Roamscan::EntryReason;

class Attached : public testing::Environment
{
public:
    void SetUp() override
    {
        EXPECT_EQ(entryPoint(GetModuleHandleW(nullptr), EntryReason::ProcessAttach, nullptr), 1);
    }
    void TearDown() override { entryPoint(nullptr, EntryReason::ProcessDetach, nullptr); }
};

testing::Environment const* const attached = testing::AddGlobalTestEnvironment(new Attached);

} // namespace
#endif
