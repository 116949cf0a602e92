#pragma once

#include <filesystem>
#include <fstream>
#include <ios>
#include <memory>

namespace oV::Roamscan::tool
{

/// Creates a file that can be removed while it is open, or empties the one that is there. On Windows, a file
/// that std::filebuf::open() has opened cannot.
/// @param mode std::ios::out, also with std::ios::in; the file is always binary
/// @return nullptr on failure; errno may have the reason
[[nodiscard]] std::unique_ptr<std::filebuf> createRemovable(std::filesystem::path const& path,
                                                            std::ios::openmode mode);

} // namespace oV::Roamscan::tool
