// The fuzzers' property check: a violated property stops the run so that libFuzzer keeps the input.
#pragma once

#include <cstdio>

inline void require(bool holds, const char* property)
{
    if (!holds) {
        std::fprintf(stderr, "violated: %s\n", property);
        __builtin_trap();
    }
}
