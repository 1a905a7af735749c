// SPDX-License-Identifier: Zlib
#include "sound/PortAudioDevice.h"

#include <iostream>
#include <sstream>
#include <utility>

#include <gtest/gtest.h>

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

TEST_F(PortAudioDeviceTest, OpensAndClosesOneStream) {
    float buffer[6] = {};
    EXPECT_TRUE(device.open());
    EXPECT_FALSE(device.open());
    EXPECT_EQ(takeCalls(), opening);
    EXPECT_EQ(askForSamples(buffer, 2), paContinue);
    EXPECT_EQ(buffer[3], 0.25f);
    EXPECT_EQ(buffer[4], 0.0f);
    device.close();
    device.close();
    EXPECT_EQ(takeCalls(), closing);
    { // the destructor closes the stream
        PortAudioDevice other, neverOpened;
        other.setAudioApi("ALSA");
        other.setChannels(1, 0);
        EXPECT_TRUE(other.open());
        EXPECT_EQ(takeCalls()[2], "OpenStream 3x1, null, 44100, 0, 0");
    }
    EXPECT_EQ(takeCalls(), closing);
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

TEST_F(PortAudioDeviceTest, ChoosesAnAudioApiByItsName) {
    const std::pair<const char*, PaHostApiTypeId> apis[] = {
        {"DirectSound", paDirectSound}, {"MME", paMME}, {"OSS", paOSS}, {"JACK", paJACK}};
    fake.apis.clear();
    for (const auto& [name, id] : apis) fake.addApi(id, name, paNoDevice, id);
    for (const auto& [name, id] : apis) {
        device.setAudioApi(name);
        takeCalls();
        EXPECT_TRUE(device.open()) << name;
        EXPECT_EQ(takeCalls()[2], "OpenStream null, " + std::to_string(id) + "x2, 44100, 0, 0");
        device.close();
    }
    device.setAudioApi("alsa"); // unknown, like DirectSound
    fake.apis.erase(fake.apis.begin());
    EXPECT_TRUE(device.open());
    EXPECT_EQ(takePrinted(), "PortAudioDevice: Audio API not found, using MME.\n");
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
    askForSamples(buffer, 1); // the server was only paused, but the callback may be gone
    EXPECT_EQ(buffer[0], 0.0f);
}
