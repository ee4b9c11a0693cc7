// Compiled as C++17 and as C++20: every public header must build in both.
#include <vexa/vexa.hpp>

int vexa_public_headers_compile() { return 0; }
