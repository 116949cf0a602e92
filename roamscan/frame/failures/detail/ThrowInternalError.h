#pragma once

namespace oV::Roamscan::detail
{

/// Throws an InternalErrorException. `message` is a literal, `function` the qualified name of the throwing
/// function, `file` the name of its source. Null pointers become the null string.
[[noreturn]] void
throwInternalError(wchar_t const* message, char const* function, char const* file, unsigned int line);

} // namespace oV::Roamscan::detail
