// SPDX-License-Identifier: Zlib
#pragma once

#include <portaudio.h>

#include <set>
#include <string>
#include <vector>

// A PortAudio without sound: a test program that links it calls it in place of the library. It
// answers what a test asked for and remembers each call that touches the system or the stream.
class FakePortAudio {
public:
    // What the next calls answer.
    std::vector<PaHostApiInfo> apis; // the first one is the default
    PaError initializeResult = paNoError;
    PaError openResult = paNoError;
    PaError startResult = paNoError;
    std::set<double> refusedRates;   // hertz
    std::string chatter;             // what Pa_Initialize writes to standard error
    void (*atTerminate)() = nullptr; // what Pa_Terminate calls

    // What happened: the calls in order, without "Pa_"; and what the stream was opened with.
    std::vector<std::string> calls;
    PaStreamCallback* callback = nullptr;
    void* userData = nullptr;

    void addApi(PaHostApiTypeId type, const char* name, PaDeviceIndex input, PaDeviceIndex output);

    // The one that the functions of PortAudio answer from; a new one forgets everything.
    static FakePortAudio& current();
    static FakePortAudio& renew();
};
