#include "tools/clouds/PcdReader.h"

#include "tools/clouds/BinaryPoints.h"
#include "tools/clouds/PcdHeader.h"
#include "tools/clouds/TextPoints.h"

#include <utility>

namespace oV::Roamscan::tool
{

std::unique_ptr<PointReader> openPcd(CloudInput input)
{
    PcdHeader const header = readPcdHeader(*input.stream, input.name);
    if (header.binary) {
        return readRecords(std::move(input), header.layout, header.pointCount, std::endian::little);
    }
    TextLines const lines{header.lines + 1, header.pointCount};
    return readLines(std::move(input), header.layout, Separator::Blanks, lines);
}

} // namespace oV::Roamscan::tool
