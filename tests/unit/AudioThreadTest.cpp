// SPDX-License-Identifier: Zlib
// What the audio thread may do while it renders: nothing but compute. Memory and locks are counted
// by functions of the same names as the C library's, which come first; and the kernel is asked to
// answer every call of the thread with a signal.

#include <dlfcn.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <pthread.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <functional>
#include <iterator>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/MusicMinute.h"

// What this thread did while it was watched.
static thread_local bool isWatched = false;
static thread_local int allocations = 0; // and what was freed
static thread_local int locks = 0;
static thread_local int systemCalls = 0;

static void count(int& number) {
    if (isWatched) ++number;
}

// operator new and delete of the C++ library lead here too.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);

void* malloc(std::size_t bytes) {
    count(allocations);
    return __libc_malloc(bytes);
}

void* calloc(std::size_t number, std::size_t bytes) {
    count(allocations);
    return __libc_calloc(number, bytes);
}

void* realloc(void* memory, std::size_t bytes) {
    count(allocations);
    return __libc_realloc(memory, bytes);
}

void* aligned_alloc(std::size_t alignment, std::size_t bytes) {
    count(allocations);
    return __libc_memalign(alignment, bytes);
}

void free(void* memory) {
    count(allocations);
    __libc_free(memory);
}

int pthread_mutex_lock(pthread_mutex_t* mutex) {
    static const auto real =
        reinterpret_cast<int (*)(pthread_mutex_t*)>(dlsym(RTLD_NEXT, "pthread_mutex_lock"));
    count(locks);
    return real(mutex);
}

int pthread_mutex_trylock(pthread_mutex_t* mutex) {
    static const auto real =
        reinterpret_cast<int (*)(pthread_mutex_t*)>(dlsym(RTLD_NEXT, "pthread_mutex_trylock"));
    count(locks);
    return real(mutex);
}
}

class AudioThreadTest : public testing::Test {
protected:
    struct Deeds {
        int allocations;
        int locks;
        int systemCalls;
    };

    // The signal of a call that the kernel held back; the call then fails.
    static void onSystemCall(int) { count(systemCalls); }

    static void SetUpTestSuite() {
        struct sigaction action = {};
        action.sa_handler = onSystemCall;
        sigaction(SIGSYS, &action, nullptr);
    }

    // From here on the thread can only return from the signal, and end.
    static bool refuseSystemCalls() {
        sock_filter steps[] = {
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_rt_sigreturn, 1, 0),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_exit, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
        };
        const sock_fprog program = {std::size(steps), steps};
        return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
               prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
    }

    // What a fresh thread does while it runs the work.
    static Deeds watch(const std::function<void()>& work) {
        Deeds seen = {};
        bool refused = false;
        std::thread thread([&] {
            free(malloc(1)); // the C library's first for a thread asks the system for more
            refused = refuseSystemCalls();
            isWatched = true;
            work();
            isWatched = false;
            seen = {allocations, locks, systemCalls};
        });
        thread.join();
        EXPECT_TRUE(refused);
        return seen;
    }
};

TEST_F(AudioThreadTest, WhatIsForbiddenIsNoticed) {
    static std::atomic<int*> memory; // out of the compiler's sight
    const Deeds seen = watch([] {
        memory = new int(1);
        delete memory.load();
        pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
        pthread_mutex_lock(&mutex);
        pthread_mutex_unlock(&mutex);
        syscall(SYS_getppid);
        std::this_thread::yield();
    });
    EXPECT_EQ(seen.allocations, 2);
    EXPECT_EQ(seen.locks, 1);
    EXPECT_EQ(seen.systemCalls, 2);
}

TEST_F(AudioThreadTest, RenderingAllocatesNothingLocksNothingAndCallsNothing) {
    MusicMinute minute;
    const Deeds seen = watch([&] { minute.render(); });
    EXPECT_GT(minute.loudest(), 0.1f);
    EXPECT_GE(minute.bars(), 29);
    EXPECT_EQ(seen.allocations, 0);
    EXPECT_EQ(seen.locks, 0);
    EXPECT_EQ(seen.systemCalls, 0);
}
