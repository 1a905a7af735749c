// SPDX-License-Identifier: Zlib
#include "sound/PortAudioDevice.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <iterator>
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

    // Stands for a static object that a callback uses, built before any stream is opened.
    struct Older {
        bool printsItsEnd = false;
        ~Older() {
            if (printsItsEnd) std::cerr << "then the older object";
        }
    };
    static Older older;

    PortAudioDeviceTest() : fake(FakePortAudio::renew()) {
        fake.addApi(paALSA, "ALSA", 3, 4);
        fake.addApi(paJACK, "JACK Audio Connection Kit", 5, 6);
        device.setAudioApi("ALSA");
        device.setCallback(&source);
        coutBuffer = std::cout.rdbuf(printed.rdbuf());
    }

    ~PortAudioDeviceTest() override {
        std::cout.rdbuf(coutBuffer);
        EXPECT_EQ(printed.str(), "");
    }

    // The calls since the last time, and what was printed since the last time.
    Calls takeCalls() { return std::exchange(fake.calls, Calls()); }
    std::string takePrinted() { return std::exchange(printed, std::ostringstream()).str(); }

    int askForSamples(float* buffer, unsigned long frames) {
        return fake.callback(nullptr, buffer, frames, nullptr, paOutputUnderflow, fake.userData);
    }

    static inline const std::string rateRefused =
        "44100Hz samplerate not supported, using 48000Hz.\n";
    static inline const Calls opening = {"Initialize", "IsFormatSupported null, 4x2, 44100",
                                         "OpenStream null, 4x2, 44100, 0, 0", "StartStream"};
    static inline const Calls closing = {"StopStream", "CloseStream", "Terminate"};

    FakePortAudio& fake;
    Source source;
    PortAudioDevice device;

private:
    std::ostringstream printed;
    std::streambuf* coutBuffer = nullptr;
};

PortAudioDeviceTest::Older PortAudioDeviceTest::older;

TEST_F(PortAudioDeviceTest, OpensAndClosesOneStream) {
    EXPECT_TRUE(device.open());
    EXPECT_EQ(takeCalls(), opening);
    EXPECT_FALSE(device.open());
    EXPECT_EQ(takeCalls(), Calls());
    device.close();
    EXPECT_EQ(takeCalls(), closing);
    device.close();
    EXPECT_EQ(takeCalls(), Calls());
    { // the destructor closes the stream
        PortAudioDevice other, neverOpened;
        other.setAudioApi("ALSA");
        other.setChannels(1, 0);
        EXPECT_TRUE(other.open());
        EXPECT_EQ(takeCalls()[2], "OpenStream 3x1, null, 44100, 0, 0");
    }
    EXPECT_EQ(takeCalls(), closing);
}

TEST_F(PortAudioDeviceTest, TheStreamGetsItsSamplesFromTheCallback) {
    float buffer[6] = {};
    ASSERT_TRUE(device.open());
    EXPECT_EQ(askForSamples(buffer, 2), paContinue);
    EXPECT_EQ(buffer[3], 0.25f);
    EXPECT_EQ(buffer[4], 0.0f);
}

TEST_F(PortAudioDeviceTest, ARefusedRateIsReplaced) {
    fake.refusedRates = {44100};
    EXPECT_TRUE(device.open());
    EXPECT_EQ(takePrinted(), rateRefused);
    EXPECT_EQ(takeCalls(), (Calls{"Initialize", "IsFormatSupported null, 4x2, 44100",
                                  "IsFormatSupported null, 4x2, 48000",
                                  "OpenStream null, 4x2, 48000, 0, 0", "StartStream"}));
    device.close();
    fake.refusedRates = {22050, 48000};
    device.setSampleRate(22050);
    EXPECT_TRUE(device.open()); // the text is always the same
    EXPECT_EQ(takePrinted(), rateRefused + "48000Hz not supported either?\n");
}

TEST_F(PortAudioDeviceTest, AFailurePrintsALineAndUndoesWhatWasDone) {
    const struct {
        PaError FakePortAudio::*result;
        const char* what;
        std::ptrdiff_t calls; // how many of `opening`
        Calls undoing;
    } cases[] = {
        {&FakePortAudio::initializeResult, "initialise", 1, {}},
        {&FakePortAudio::openResult, "open stream", 3, {"Terminate"}},
        {&FakePortAudio::startResult, "start stream", 4, {"CloseStream", "Terminate"}},
    };
    for (const auto& [result, what, calls, undoing] : cases) {
        Calls expected(opening.begin(), opening.begin() + calls);
        expected.insert(expected.end(), undoing.begin(), undoing.end());
        fake.*result = 1; // anything but 0 is a failure
        EXPECT_FALSE(device.open());
        EXPECT_EQ(takePrinted(), std::string("PortAudioDevice Error: Could not ") + what + ".\n");
        device.close();
        EXPECT_EQ(takeCalls(), expected);
        fake.*result = paNoError;
    }
    EXPECT_TRUE(device.open());
}

TEST_F(PortAudioDeviceTest, KnowsTheNamesOfAudioApis) {
    static constexpr const char* names[] = {"DirectSound", "MME",  "ASIO", "CoreAudio", "OSS",
                                            "ALSA",        "JACK", "",     "alsa"};
    static constexpr PaHostApiTypeId ids[] = {paDirectSound, paMME,         paASIO,
                                              paCoreAudio,   paOSS,         paALSA,
                                              paJACK,        paDirectSound, paDirectSound};
    fake.apis.clear();
    for (const PaHostApiTypeId id : ids) fake.addApi(id, "", paNoDevice, id);
    for (std::size_t i = 0; i < std::size(names); ++i) {
        device.setAudioApi(names[i]);
        EXPECT_TRUE(device.open()) << names[i];
        EXPECT_EQ(takeCalls()[2], "OpenStream null, " + std::to_string(ids[i]) + "x2, 44100, 0, 0");
        device.close();
        takeCalls();
    }
}

TEST_F(PortAudioDeviceTest, UsesTheDefaultApiIfTheChosenOneIsMissing) {
    device.setAudioApi("DirectSound");
    EXPECT_TRUE(device.open());
    EXPECT_EQ(takePrinted(), "PortAudioDevice: Audio API not found, using ALSA.\n");
    EXPECT_EQ(takeCalls(), opening);
    device.close();
    takeCalls();
    fake.apis.clear();
    EXPECT_FALSE(device.open());
    EXPECT_EQ(takePrinted(), "PortAudioDevice Error: Could not open stream.\n");
    EXPECT_EQ(takeCalls(), (Calls{"Initialize", "Terminate"}));
}

// Closing it would wait for a buffer that a dead server never asks for.
TEST_F(PortAudioDeviceTest, DoesNotCloseAJackStreamWhoseServerIsSilent) {
    float buffer[2] = {};
    device.setAudioApi("JACK");
    ASSERT_TRUE(device.open());
    takeCalls();
    device.close();
    EXPECT_EQ(takeCalls(), Calls());
    askForSamples(buffer, 1); // the server was only stopped, but the callback may be gone
    EXPECT_EQ(buffer[0], 0.0f);

    ASSERT_TRUE(device.open());
    std::atomic<bool> closed = false;
    std::thread server([&] {
        while (!closed) {
            askForSamples(buffer, 1);
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

TEST_F(PortAudioDeviceTest, SetsThePeriodUnlessThePlayerDid) {
    unsetenv("PA_ALSA_PERIODSIZE");
    for (const char* period : {"512", "128"}) {
        ASSERT_TRUE(device.open());
        device.close();
        EXPECT_EQ(Platform::environment("PA_ALSA_PERIODSIZE"), period);
        Platform::setEnvironment("PA_ALSA_PERIODSIZE", "128");
    }
}

TEST_F(PortAudioDeviceTest, HidesWhatTheLibrariesPrint) {
    fake.chatter = "chatter\n";
    testing::internal::CaptureStderr();
    std::cerr << "before ";
    EXPECT_TRUE(device.open());
    std::cerr << "after";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "before after");
}

// As Xlib does when the X server goes away.
TEST_F(PortAudioDeviceTest, AnExitClosesTheStreamBeforeOlderObjectsGo) {
    const auto exitWhilePlaying = [this] {
        older.printsItsEnd = true;
        fake.atTerminate = [] { std::cerr << "closed, "; };
        if (device.open()) std::exit(3);
    };
    EXPECT_EXIT(exitWhilePlaying(), testing::ExitedWithCode(3), "^closed, then the older object$");
}
