#include "tools/CommandLine.h"
#include "tools/io/Temporary.h"

#include <iostream>

int main(int argc, char** argv)
{
    oV::Roamscan::tool::removeTemporariesOnSignals();
    return oV::Roamscan::tool::runTool(argc, argv, std::cout, std::cerr);
}
