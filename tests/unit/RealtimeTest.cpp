// SPDX-License-Identifier: Zlib
// What the audio thread renders, for RealtimeSanitizer: a function marked nonblocking ends the
// program with a report when it, or anything that it calls, allocates, locks or calls the system.

#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/MusicMinute.h"

template <typename Work>
static void watch(const Work& work) [[clang::nonblocking]] {
    work();
}

TEST(RealtimeTest, WhatIsForbiddenEndsTheProgram) {
    static std::atomic<int*> memory = new int(1); // out of the compiler's sight
    static pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    EXPECT_DEATH(watch([] { memory = new int(2); }), "unsafe-library-call");
    EXPECT_DEATH(watch([] { delete memory.load(); }), "unsafe-library-call");
    EXPECT_DEATH(watch([] { pthread_mutex_lock(&mutex); }), "unsafe-library-call");
    EXPECT_DEATH(watch([] { usleep(1); }), "unsafe-library-call");
    EXPECT_DEATH(watch([] { std::this_thread::yield(); }), "unsafe-library-call");
    delete memory.load();
}

TEST(RealtimeTest, RenderingAllocatesNothingLocksNothingAndCallsNothing) {
    MusicMinute minute;
    std::thread([&] { watch([&] { minute.render(); }); }).join();
    EXPECT_GT(minute.loudest(), 0.1f);
    EXPECT_GE(minute.bars(), 29);
}
