#include "tools/io/FrameFile.h"

#include "tools/console/ToolError.h"

#include <roamscan/frame/platform/LittleEndian.h>

#include <array>
#include <string>

namespace oV::Roamscan::tool
{

InputFile openFrame(std::filesystem::path const& path, std::string_view kind)
{
    constexpr std::uint64_t countSize = 8; // the byte count in front of a frame
    InputFile file = openInput(path);
    if (file.size < countSize) {
        throw fileError(
            path, "is too short for a " + std::string(kind) + " (" + std::to_string(file.size) + " bytes)");
    }
    std::array<char, countSize> bytes{};
    file.stream.read(bytes.data(), countSize);
    std::uint64_t const promised = fromLittleEndian(bytes);
    if (promised > file.size - countSize) {
        throw fileError(path,
                        "ends early or is no " + std::string(kind) + ": its frame promises " +
                            std::to_string(promised) + " bytes, " + std::to_string(file.size - countSize) +
                            " are there");
    }
    return file;
}

} // namespace oV::Roamscan::tool
