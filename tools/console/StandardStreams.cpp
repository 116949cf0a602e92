#include "tools/console/StandardStreams.h"

#if defined(_WIN32)

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

namespace oV::Roamscan::tool
{

StandardStreams::StandardStreams() : codePage_(GetConsoleOutputCP())
{
    for (std::FILE* const stream : {stdin, stdout, stderr}) {
        _setmode(_fileno(stream), _O_BINARY);
    }
    SetConsoleOutputCP(CP_UTF8);
}

StandardStreams::~StandardStreams()
{
    if (codePage_ != 0) { // there is a console
        SetConsoleOutputCP(codePage_);
    }
}

} // namespace oV::Roamscan::tool

#else

namespace oV::Roamscan::tool
{

StandardStreams::StandardStreams() = default;
StandardStreams::~StandardStreams() = default;

} // namespace oV::Roamscan::tool

#endif
