/// @file
/// What every target wants from the address sanitizer; ASAN_OPTIONS goes before it.

// A count that lies asks for memory that is not to be had, and that is an exception, not a finding. A machine
// has room for more than this, but the sanitizer marks every byte of it, which takes too long.
// NOLINTNEXTLINE(readability-identifier-naming): the name is the sanitizer's
extern "C" char const* __asan_default_options()
{
    return "allocator_may_return_null=1:max_allocation_size_mb=256";
}
