// SPDX-License-Identifier: Zlib
#pragma once

#include <portaudio.h>

#include <set>
#include <string>
#include <vector>

// A PortAudio without sound, which replaces the library in a test program that links it. It returns
// what the test set and records each call that concerns the system or the stream.
class FakePortAudio {
public:
    // What the next calls return.
    std::vector<PaHostApiInfo> apis; // the first one is the default
    PaError initializeResult = paNoError;
    PaError openResult = paNoError;
    PaError startResult = paNoError;
    std::set<double> refusedRates; // hertz

    // The calls so far, without "Pa_", and what the stream was opened with.
    std::vector<std::string> calls;
    PaStreamCallback* callback = nullptr;
    void* userData = nullptr;

    void addApi(PaHostApiTypeId type, const char* name, PaDeviceIndex input, PaDeviceIndex output);

    // The object that the functions of PortAudio use; renew replaces it with an empty one.
    static FakePortAudio& current();
    static FakePortAudio& renew();
};
