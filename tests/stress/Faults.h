// SPDX-License-Identifier: Zlib
#pragma once

#include <atomic>

// Makes calls fail: of SDL and its companions, of PortAudio, and of the C library for files. The
// linker redirects them (--wrap), or finds those of Faults.cpp before the library's.
struct Faults {
    static inline int failing = 0;     // the number of the call that fails, from 1; 0 for none
    static inline bool onward = false; // whether the calls after it fail too
    static inline std::atomic<int> calls = 0; // so far

    static bool isNext() {
        const int call = ++calls;
        return call == failing || (onward && failing > 0 && call > failing);
    }
};
