// SPDX-License-Identifier: Zlib
#include "sound/PortAudioDevice.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <thread>
#include <utility>

#include <gtest/gtest.h>

#include "platform/Platform.h"
#include "sound/PortAudioCallback.h"
#include "tests/support/FakePortAudio.h"

using Calls = std::vector<std::string>;

// A system with two APIs, whose devices have different numbers, and a record of what is printed.
class PortAudioDeviceTest : public testing::Test {
protected:
    class Source : public PortAudioCallback {
    public:
        void fillBuffer(const void* input, float* output, std::uint32_t frames) override {
            EXPECT_EQ(input, nullptr);
            for (std::uint32_t i = 0; i < 2 * frames; ++i) output[i] = 0.25f;
        }
    };

    // What a callback may use: static, and built before any stream is opened.
    class Older {
    public:
        ~Older() {
            if (tellsItsEnd) std::cerr << "then the older object";
        }

        bool tellsItsEnd = false;
    };

    static Older& older() {
        static Older object;
        return object;
    }

    static void SetUpTestSuite() { older(); }

    PortAudioDeviceTest() : fake(FakePortAudio::renew()) {
        fake.addApi(paALSA, "ALSA", 3, 4);
        fake.addApi(paJACK, "JACK Audio Connection Kit", 5, 6);
        device.setAudioApi("ALSA");
        device.setCallback(&source);
        coutBuffer = std::cout.rdbuf(printed.rdbuf());
    }

    ~PortAudioDeviceTest() override { std::cout.rdbuf(coutBuffer); }

    // The calls since the last time.
    Calls takeCalls() { return std::exchange(fake.calls, Calls()); }

    // What was printed since the last time.
    std::string takePrinted() {
        const std::string text = printed.str();
        printed.str("");
        return text;
    }

    static constexpr const char* rateRefused = "44100Hz samplerate not supported, using 48000Hz.\n";
    static inline const Calls closing = {"StopStream", "CloseStream", "Terminate"};

    FakePortAudio& fake;
    Source source;
    PortAudioDevice device;

private:
    std::ostringstream printed;
    std::streambuf* coutBuffer = nullptr;
};

TEST_F(PortAudioDeviceTest, OpensAndClosesTheOneStream) {
    EXPECT_TRUE(device.open());
    EXPECT_EQ(takeCalls(), (Calls{"Initialize", "IsFormatSupported null, 4x2, 44100",
                                  "OpenStream null, 4x2, 44100, 0, 0", "StartStream"}));
    EXPECT_FALSE(device.open());
    EXPECT_EQ(takeCalls(), Calls());
    device.close();
    EXPECT_EQ(takeCalls(), closing);
    device.close();
    EXPECT_EQ(takeCalls(), Calls());
    { // its end closes it; channels below one are none
        PortAudioDevice other, neverOpened;
        other.setAudioApi("ALSA");
        other.setChannels(1, 0);
        EXPECT_TRUE(other.open());
        EXPECT_EQ(takeCalls()[2], "OpenStream 3x1, null, 44100, 0, 0");
    }
    EXPECT_EQ(takeCalls(), closing);
    EXPECT_EQ(takePrinted(), "");
}

TEST_F(PortAudioDeviceTest, TheStreamAsksTheCallbackAndNeverEndsByItself) {
    float buffer[6] = {};
    ASSERT_TRUE(device.open());
    EXPECT_EQ(fake.callback(nullptr, buffer, 2, nullptr, 0, fake.userData), paContinue);
    EXPECT_EQ(buffer[3], 0.25f);
    EXPECT_EQ(buffer[4], 0.0f);
    EXPECT_EQ(fake.callback(nullptr, buffer, 0, nullptr, paOutputUnderflow, fake.userData),
              paContinue);
    device.close();

    device.setCallback(nullptr);
    ASSERT_TRUE(device.open());
    EXPECT_EQ(fake.userData, nullptr);
    EXPECT_EQ(fake.callback(nullptr, buffer, 3, nullptr, 0, fake.userData), paContinue);
    EXPECT_EQ(buffer[3], 0.25f);
    EXPECT_EQ(buffer[4], 0.0f);
}

TEST_F(PortAudioDeviceTest, ARefusedRateIsToldAndStopsNothing) {
    fake.refusedRates = {44100};
    EXPECT_TRUE(device.open());
    EXPECT_EQ(takePrinted(), rateRefused);
    EXPECT_EQ(takeCalls(), (Calls{"Initialize", "IsFormatSupported null, 4x2, 44100",
                                  "IsFormatSupported null, 4x2, 48000",
                                  "OpenStream null, 4x2, 48000, 0, 0", "StartStream"}));
    device.close();

    fake.refusedRates = {44100, 48000};
    device.setSampleRate(44100);
    EXPECT_TRUE(device.open());
    EXPECT_EQ(takePrinted(), std::string(rateRefused) + "48000Hz not supported either?\n");
    device.close();

    fake.refusedRates = {22050};
    device.setSampleRate(22050);
    EXPECT_TRUE(device.open());
    EXPECT_EQ(takePrinted(), rateRefused); // the text is the same whatever was asked for
}

TEST_F(PortAudioDeviceTest, EachFailureIsOneLineAndUndoesWhatWasDone) {
    const std::string format = "IsFormatSupported null, 4x2, 44100";
    const std::string open = "OpenStream null, 4x2, 44100, 0, 0";
    const struct {
        PaError FakePortAudio::*result;
        const char* what;
        Calls calls;
    } cases[] = {
        {&FakePortAudio::initializeResult, "initialise", {"Initialize"}},
        {&FakePortAudio::openResult, "open stream", {"Initialize", format, open, "Terminate"}},
        {&FakePortAudio::startResult,
         "start stream",
         {"Initialize", format, open, "StartStream", "CloseStream", "Terminate"}}};
    for (const auto& [result, what, calls] : cases) {
        // Any result but 0 is a failure, a positive one too.
        for (const PaError failure : {static_cast<PaError>(paUnanticipatedHostError), 1}) {
            fake.*result = failure;
            EXPECT_FALSE(device.open());
            EXPECT_EQ(takePrinted(),
                      std::string("PortAudioDevice Error: Could not ") + what + ".\n");
            EXPECT_EQ(takeCalls(), calls);
            device.close();
            EXPECT_EQ(takeCalls(), Calls());
        }
        fake.*result = paNoError;
    }
    EXPECT_TRUE(device.open()); // a later try starts afresh
}

TEST_F(PortAudioDeviceTest, KnowsTheNamesOfAudioApis) {
    static constexpr std::pair<const char*, PaHostApiTypeId> names[] = {
        {"DirectSound", paDirectSound},
        {"MME", paMME},
        {"ASIO", paASIO},
        {"CoreAudio", paCoreAudio},
        {"OSS", paOSS},
        {"ALSA", paALSA},
        {"JACK", paJACK},
        {"", paDirectSound},
        {"alsa", paDirectSound},
        {"ALSA ", paDirectSound}};
    fake.apis.clear();
    for (const auto& name : names) { // each with an output device that is its id
        fake.addApi(name.second, name.first, paNoDevice, name.second);
    }
    for (const auto& [name, id] : names) {
        device.setAudioApi(name);
        EXPECT_TRUE(device.open()) << name;
        EXPECT_EQ(takeCalls()[2], "OpenStream null, " + std::to_string(id) + "x2, 44100, 0, 0");
        device.close();
        takeCalls();
    }
    EXPECT_EQ(takePrinted(), "");
}

TEST_F(PortAudioDeviceTest, WithoutTheChosenApiTheDefaultOneIsTaken) {
    device.setAudioApi("DirectSound");
    EXPECT_TRUE(device.open());
    EXPECT_EQ(takePrinted(), "PortAudioDevice: Audio API not found, using ALSA.\n");
    EXPECT_EQ(takeCalls()[2], "OpenStream null, 4x2, 44100, 0, 0");
    device.close();
    takeCalls();

    fake.apis.clear();
    EXPECT_FALSE(device.open());
    EXPECT_EQ(takePrinted(), "PortAudioDevice Error: Could not open stream.\n");
    EXPECT_EQ(takeCalls(), (Calls{"Initialize", "Terminate"}));
}

// A JACK that has died never asks again, and PortAudio would wait for that.
TEST_F(PortAudioDeviceTest, AStreamOfJackThatNobodyAsksAnyMoreIsLeftAlone) {
    float buffer[2] = {};
    const auto ask = [&] { return fake.callback(nullptr, buffer, 1, nullptr, 0, fake.userData); };
    device.setAudioApi("JACK");
    ASSERT_TRUE(device.open());
    ask();
    EXPECT_EQ(std::exchange(buffer[0], 0.0f), 0.25f);
    takeCalls();
    device.close();
    EXPECT_EQ(takeCalls(), Calls());
    ask(); // was it only halted, nothing of the program's is touched any more
    EXPECT_EQ(buffer[0], 0.0f);

    ASSERT_TRUE(device.open());
    std::atomic<bool> closed = false;
    std::thread server([&] {
        while (!closed) {
            ask();
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    takeCalls();
    device.close();
    closed = true;
    server.join();
    EXPECT_EQ(takeCalls(), closing);
    EXPECT_EQ(buffer[0], 0.25f);
}

TEST_F(PortAudioDeviceTest, ThePeriodIsSetUnlessThePlayerSetOne) {
    unsetenv("PA_ALSA_PERIODSIZE");
    ASSERT_TRUE(device.open());
    device.close();
    EXPECT_EQ(Platform::environment("PA_ALSA_PERIODSIZE"), "512");
    Platform::setEnvironment("PA_ALSA_PERIODSIZE", "128");
    ASSERT_TRUE(device.open());
    EXPECT_EQ(Platform::environment("PA_ALSA_PERIODSIZE"), "128");
}

TEST_F(PortAudioDeviceTest, TheLibrariesChatterDoesNotReachThePlayer) {
    fake.chatter = "chatter\n";
    for (const PaError result : {static_cast<PaError>(paNoError), 1}) {
        fake.initializeResult = result;
        testing::internal::CaptureStderr();
        std::cerr << "before ";
        EXPECT_EQ(device.open(), result == paNoError);
        std::cerr << "after";
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "before after");
        device.close();
    }
}

// Without a descriptor to spare standard error stays as it is: the last one copies it, and then
// none is left to open /dev/null with.
TEST_F(PortAudioDeviceTest, StandardErrorSurvivesWantOfDescriptors) {
    rlimit limit = {};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    testing::internal::CaptureStderr();
    const int lowestFree = fcntl(STDERR_FILENO, F_DUPFD, 3);
    close(lowestFree);
    for (const int spare : {0, 1, 2}) {
        const rlimit few = {static_cast<rlim_t>(lowestFree + spare), limit.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
        {
            const Platform::QuietStandardError quiet;
            std::cerr << spare << (spare < 2 ? " heard, " : " not heard, ");
        }
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
        std::cerr << "back, ";
        const int next = fcntl(STDERR_FILENO, F_DUPFD, 3);
        EXPECT_EQ(next, lowestFree); // no descriptor was left open
        close(next);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "0 heard, back, 1 heard, back, back, ");
}

TEST_F(PortAudioDeviceTest, AClosedStandardErrorStaysClosed) {
    const int kept = fcntl(STDERR_FILENO, F_DUPFD, 3);
    close(STDERR_FILENO);
    { const Platform::QuietStandardError quiet; }
    const int state = fcntl(STDERR_FILENO, F_GETFD);
    dup2(kept, STDERR_FILENO);
    close(kept);
    EXPECT_EQ(state, -1);
}

// As the display's library does when the display goes away.
TEST_F(PortAudioDeviceTest, AnExitClosesTheStreamBeforeOlderObjectsGo) {
    const auto exitWhilePlaying = [this](bool closeFirst) {
        older().tellsItsEnd = true;
        fake.atTerminate = [] { std::cerr << "closed, "; };
        if (!device.open()) return;
        if (closeFirst) device.close();
        std::exit(3);
    };
    for (const bool closeFirst : {false, true}) {
        EXPECT_EXIT(exitWhilePlaying(closeFirst), testing::ExitedWithCode(3),
                    "^closed, then the older object$");
    }
}
