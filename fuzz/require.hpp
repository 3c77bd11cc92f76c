// Stopping where a property fails.
#pragma once

#include <cstdio>
#include <cstdlib>

#define REQUIRE(property)                                                                                    \
    if (!(property)) std::fprintf(stderr, "%s:%d: not so: %s\n", __FILE__, __LINE__, #property), std::abort()
