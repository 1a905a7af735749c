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
#include <functional>
#include <iterator>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "game/PlayMusic.h"
#include "sound/AudioSingleton.h"

// What this thread did while it was watched.
static thread_local bool isWatched = false;
static thread_local int allocations = 0; // and calls of free
static thread_local int locks = 0;
static thread_local int systemCalls = 0;

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

class AudioThreadTest : public testing::Test, public AudioSingleton::Callback {
protected:
    struct Counts {
        int allocations;
        int locks;
        int systemCalls;
    };

    // Handles the signal of a system call that the kernel blocked; the call then fails.
    static void onSystemCall(int) { count(systemCalls); }

    static void SetUpTestSuite() {
        struct sigaction action = {};
        action.sa_handler = onSystemCall;
        sigaction(SIGSYS, &action, nullptr);
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

    // Counts what a new thread does while it runs the work.
    static Counts watch(const std::function<void()>& work) {
        Counts seen = {};
        bool refused = false;
        std::thread thread([&] {
            free(malloc(1)); // a thread's first allocation calls the system
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

    void onBar() override { music.onBar(sound, ++bars % 4 == 3 ? 0.1f : 1.0f); }

    AudioSingleton& sound = AudioSingleton::instance();
    PlayMusic music;
    int bars = 0;
};

TEST_F(AudioThreadTest, CountsWhatIsForbidden) {
    static std::atomic<int*> memory; // so that the compiler cannot remove the allocation
    const Counts seen = watch([] {
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

// A minute of the music of a play, slow and fast, with all drums, more notes than a bank has
// voices, and buffers of many lengths.
TEST_F(AudioThreadTest, RenderingNeitherAllocatesNorLocksNorCallsTheSystem) {
    sound.setPitches({220, 247.5f, 275, 330, 371.25f, 412.5f, 110, 55});
    for (std::int32_t track = 3; track < AudioSingleton::tracks; ++track) {
        for (std::int32_t step = 0; step < AudioSingleton::steps; ++step) {
            sound.toggleStep(track, step, step % 4);
        }
    }
    music.start(sound);
    sound.setCallback(this);
    for (int thump = 0; thump < 12; ++thump) sound.playBom();
    std::vector<float> output(2 * 2048);
    float peak = 0;
    const Counts seen = watch([&] {
        constexpr std::int32_t lengths[] = {512, 1, 256, 441, 55, 2048, 16, 0};
        std::size_t next = 0;
        for (std::int32_t left = 60 * 44100; left > 0; left -= lengths[next++ % 8]) {
            std::fill(output.begin(), output.end(), 0.0f);
            sound.process(output.data(), lengths[next % 8]);
            peak = std::max(peak, *std::max_element(output.begin(), output.end()));
        }
    });
    EXPECT_GT(peak, 0.1f);
    EXPECT_GE(bars, 29);
    EXPECT_EQ(seen.allocations, 0);
    EXPECT_EQ(seen.locks, 0);
    EXPECT_EQ(seen.systemCalls, 0);
}
