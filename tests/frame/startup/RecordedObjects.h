#pragma once

#include <cstdint>

/// @file
/// Prints which objects of the library are constructed and released while a program runs. The program
/// replaces
/// `__cxa_atexit`, which the code that the compiler generates calls after each construction of an object with
/// static storage duration.
///
/// A line is "constructed" or "releasing", the address of the object in the image that has the library, and
/// "attached" or "detached", the state of the library's module at this time. The names of the objects are not
/// known here.
namespace support
{

/// Whether an image has the library. The program defines it.
/// @param image the handle that `__cxa_atexit` is called with; null for exit actions of no image
/// @param base where the image is loaded; only set if it has the library
bool hasTheLibrary(void* image, std::uintptr_t& base);

/// The next object of the library that is constructed is the first one of a new load.
void expectLoad();

} // namespace support
