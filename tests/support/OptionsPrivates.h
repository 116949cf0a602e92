#pragma once

#include <roamscan/frame/bvbase/CriticalSection.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/options/RoamscanOptions.h>

/// The private operations of RoamscanOptions, which the library exports all the same: hosts are bound to
/// them.
namespace support
{

/// RoamscanOptions::the().
Bv_1_1::SmartPtr<oV::Roamscan::RoamscanOptions> theOptions();
/// RoamscanOptions::available().
bool areOptionsAvailable();
/// RoamscanOptions::lock.
Bv_1_1::CriticalSection& optionsLock();

template <auto the, auto available, auto lock>
struct OptionsPrivates
{
    friend Bv_1_1::SmartPtr<oV::Roamscan::RoamscanOptions> theOptions() { return the(); }
    friend bool areOptionsAvailable() { return available(); }
    friend Bv_1_1::CriticalSection& optionsLock() { return *lock; }
};

// Only an explicit instantiation may name private members.
template struct OptionsPrivates<&oV::Roamscan::RoamscanOptions::the,
                                &oV::Roamscan::RoamscanOptions::available,
                                &oV::Roamscan::RoamscanOptions::lock>;

} // namespace support
