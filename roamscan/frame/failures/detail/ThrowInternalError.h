#pragma once

namespace oV::Roamscan::detail
{

/// Throws an InternalErrorException. A null pointer becomes the null string.
/// @param message what went wrong; a literal
/// @param function the qualified name of the function that throws
/// @param file the source: a file name or a component name
/// @param line the line in that source
/// @throws InternalErrorException always
[[noreturn]] void
throwInternalError(wchar_t const* message, char const* function, char const* file, unsigned int line);

} // namespace oV::Roamscan::detail
