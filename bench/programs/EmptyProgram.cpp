/// @file
/// The least that a program of C++ loads: the C library.

int main()
{
    return 0;
}
