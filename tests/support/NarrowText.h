#pragma once

#include <roamscan/frame/bvbase/String.h>

#include <string>

namespace support
{

/// The text in the process's code page.
inline std::string narrow(Bv_1_1::String const& string)
{
    return string.stringAnsi();
}

} // namespace support
