#pragma once

#include <roamscan/frame/bvbase/String.h>

namespace oV
{

/// One message of the log.
struct LogMessage
{
    /// The text; may be NIL.
    Bv_1_1::String message;
    int severity = 0;        ///< 1 for a caught failure, 3 for unexpected content in input
    Bv_1_1::String file;     ///< the source that logged the message: a file name or a component name
    int line = 0;            ///< the line in that source
    Bv_1_1::String function; ///< the qualified name of the function
};

} // namespace oV
