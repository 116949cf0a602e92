/// @file
/// A program that does nothing, but loads the C++ runtime, as every program does that uses a class of the
/// standard library.

#include <iostream>

int main()
{
    return std::cout.good() ? 0 : 1;
}
