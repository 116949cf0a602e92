#include "tools/CommandLine.h"

#include <iostream>

int main(int argc, char** argv)
{
    return oV::Roamscan::tool::runTool(argc, argv, std::cout, std::cerr);
}
