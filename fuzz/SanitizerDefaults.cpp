/// @file
/// The defaults of AddressSanitizer for all targets. ASAN_OPTIONS overrides them.

// A wrong count may ask for memory that cannot be allocated. That is an exception, not a finding. The limit
// keeps runs fast: AddressSanitizer marks every allocated byte.
// NOLINTNEXTLINE(readability-identifier-naming): AddressSanitizer fixes the name
extern "C" char const* __asan_default_options()
{
    return "allocator_may_return_null=1:max_allocation_size_mb=256";
}
