#include "tools/CommandLine.h"
#include "tools/console/StandardStreams.h"
#include "tools/io/Temporary.h"

#include <iostream>

int main(int argc, char** argv)
{
    oV::Roamscan::tool::StandardStreams const streams;
    oV::Roamscan::tool::removeTemporariesOnSignals();
    return oV::Roamscan::tool::runTool(argc, argv, std::cout, std::cerr);
}
