#pragma once

#include "tests/support/TestPath.h"

#include <filesystem>
#include <string>

namespace support
{

/// A file or folder of the real recordings, which may be missing.
inline TestPath sharedData(std::string const& name)
{
    return TestPath(std::filesystem::path(ROAMSCAN_SHARED_DATA_DIR) / name);
}

} // namespace support
