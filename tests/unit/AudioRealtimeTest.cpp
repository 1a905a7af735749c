// SPDX-License-Identifier: Zlib
// The audio thread must not allocate, lock or call the system while it renders. This program counts
// allocations and locks in functions that replace those of the C library, and asks the kernel to
// answer each system call of the thread with a signal.

#include <dlfcn.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <pthread.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "game/PlayMusic.h"
#include "sound/AudioSingleton.h"

// What the watched thread did.
static thread_local bool isWatched = false;
static int allocations = 0; // and calls of free
static int locks = 0;
static int systemCalls = 0;

static void count(int& number) {
    if (isWatched) ++number;
}

// The C++ library's operator new and delete call these too.
extern "C" {
void* __libc_malloc(std::size_t);
void __libc_free(void*);

void* malloc(std::size_t bytes) {
    count(allocations);
    return __libc_malloc(bytes);
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
}

// Handles the signal of a system call that the kernel blocked; the call then fails.
static void onSystemCall(int) {
    count(systemCalls);
}

// From here on the thread may only return from the signal and end.
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

class AudioRealtimeTest : public testing::Test, public AudioSingleton::Callback {
protected:
    // Does each forbidden thing once, which shows that it is counted.
    static void misbehave() {
        static std::atomic<int*> memory; // so that the compiler cannot remove the allocation
        memory = new int(1);
        delete memory.load();
        pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
        pthread_mutex_lock(&mutex);
        syscall(SYS_getppid);
    }

    void onBar() override { music.onBar(sound, ++bars % 4 == 3 ? 0.1f : 1.0f); }

    AudioSingleton& sound = AudioSingleton::instance();
    PlayMusic music;
    int bars = 0;
};

// Nearly a minute of the music of a play, slow and fast, with all drums, more notes than a bank has
// voices, and buffers of many lengths.
TEST_F(AudioRealtimeTest, RenderingNeitherAllocatesNorLocksNorCallsTheSystem) {
    struct sigaction action = {};
    action.sa_handler = onSystemCall;
    sigaction(SIGSYS, &action, nullptr);
    sound.setPitches({220, 247.5f, 275, 330, 371.25f, 412.5f, 110, 55});
    for (std::int32_t track = 3; track < AudioSingleton::tracks; ++track) {
        for (std::int32_t step = 0; step < AudioSingleton::steps; ++step) {
            sound.toggleStep(track, step, step % 4);
        }
    }
    music.start(sound);
    sound.setCallback(this);
    for (int thump = 0; thump < 12; ++thump) sound.playBom();
    std::vector<float> output(2 * 512);
    const char* wanted = std::getenv("BUFFERS"); // for a long run
    const long buffers = wanted ? std::atol(wanted) : 9000;
    std::thread thread([&] {
        free(malloc(1)); // a thread's first allocation calls the system
        if (!refuseSystemCalls()) return;
        isWatched = true;
        for (long i = 0; i < buffers; ++i) {
            sound.process(output.data(), static_cast<std::int32_t>(i % 513));
        }
        misbehave();
        isWatched = false;
    });
    thread.join();
    EXPECT_GT(*std::ranges::max_element(output), 0.1f);
    EXPECT_GT(bars, 25);
    EXPECT_EQ(allocations, 2);
    EXPECT_EQ(locks, 1);
    EXPECT_EQ(systemCalls, 1);
}
