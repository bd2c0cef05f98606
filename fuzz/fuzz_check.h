#pragma once
// The one way a fuzz target reports a broken promise: the message, then abort, which libFuzzer
// records as a crash together with the input that caused it.

#include <cstdio>
#include <cstdlib>

#define FUZZ_CHECK(condition)                                                                  \
    do {                                                                                       \
        if (!(condition)) {                                                                    \
            std::fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #condition); \
            std::abort();                                                                      \
        }                                                                                      \
    } while (false)
