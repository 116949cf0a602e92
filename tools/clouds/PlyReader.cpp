#include "tools/clouds/PlyReader.h"

#include "tools/clouds/BinaryPoints.h"
#include "tools/clouds/PlyHeader.h"
#include "tools/clouds/TextPoints.h"
#include "tools/console/ToolError.h"

#include <bit>
#include <limits>
#include <string>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

void checkSize(PlyHeader const& header, CloudInput const& input)
{
    std::uint64_t const available = input.remaining();
    std::uint64_t const others = header.bytesBefore + header.bytesAfter;
    std::uint64_t const vertices = available >= others ? available - others : 0;
    std::uint64_t const stride = header.vertex.stride();
    // Division cannot overflow, whatever the count.
    bool const fits = available >= others && vertices / stride >= header.vertexCount;
    bool const exact = vertices / stride == header.vertexCount && vertices % stride == 0;
    if (!fits || !(exact || header.listsAfter)) {
        throw fileError(input.name,
                        "the header promises " + std::to_string(header.vertexCount) + " vertices of " +
                            std::to_string(stride) + " bytes, but " + std::to_string(vertices) +
                            " bytes follow it" + (others > 0 ? " besides other elements" : "") +
                            "; the file is cut off or damaged");
    }
}

} // namespace

std::unique_ptr<PointReader> openPly(CloudInput input)
{
    PlyHeader const header = readPlyHeader(*input.stream, input.name);
    if (header.format == PlyFormat::Ascii) {
        for (std::uint64_t i = 0; i < header.linesBefore && input.stream->good(); ++i) {
            input.stream->ignore(std::numeric_limits<std::streamsize>::max(), '\n');
        }
        TextLines const lines{header.lines + header.linesBefore + 1, header.vertexCount};
        return readLines(std::move(input), header.vertex, Separator::Blanks, lines);
    }
    checkSize(header, input);
    input.stream->ignore(static_cast<std::streamsize>(header.bytesBefore));
    auto const order = header.format == PlyFormat::LittleEndian ? std::endian::little : std::endian::big;
    return readRecords(std::move(input), header.vertex, header.vertexCount, order);
}

} // namespace oV::Roamscan::tool
