// SPDX-License-Identifier: Zlib
#include "tests/support/FakePortAudio.h"

#include <sstream>

static int fakeStream;

FakePortAudio& FakePortAudio::current() {
    static FakePortAudio fake;
    return fake;
}

FakePortAudio& FakePortAudio::renew() {
    return current() = FakePortAudio();
}

void FakePortAudio::addApi(PaHostApiTypeId type, const char* name, PaDeviceIndex input,
                           PaDeviceIndex output) {
    apis.push_back({1, type, name, 8, input, output});
}

// "null", or for example "3x2" for two channels of device 3.
static std::string describe(const PaStreamParameters* parameters) {
    if (!parameters) return "null";
    std::ostringstream text;
    text << parameters->device << "x" << parameters->channelCount;
    if (parameters->sampleFormat != paFloat32 || parameters->suggestedLatency != 0 ||
        parameters->hostApiSpecificStreamInfo) {
        text << " unexpected";
    }
    return text.str();
}

static PaError record(const std::string& call, const PaStream* stream) {
    FakePortAudio::current().calls.push_back(call + (stream == &fakeStream ? "" : " no stream"));
    return paNoError;
}

PaError Pa_Initialize() {
    FakePortAudio::current().calls.push_back("Initialize");
    return FakePortAudio::current().initializeResult;
}

PaError Pa_Terminate() {
    FakePortAudio::current().calls.push_back("Terminate");
    return paNoError;
}

PaHostApiIndex Pa_GetDefaultHostApi() {
    return FakePortAudio::current().apis.empty() ? static_cast<int>(paNotInitialized) : 0;
}

PaHostApiIndex Pa_HostApiTypeIdToHostApiIndex(PaHostApiTypeId type) {
    const std::vector<PaHostApiInfo>& apis = FakePortAudio::current().apis;
    for (std::size_t i = 0; i < apis.size(); ++i) {
        if (apis[i].type == type) return static_cast<PaHostApiIndex>(i);
    }
    return paHostApiNotFound;
}

const PaHostApiInfo* Pa_GetHostApiInfo(PaHostApiIndex index) {
    const std::vector<PaHostApiInfo>& apis = FakePortAudio::current().apis;
    const auto place = static_cast<std::size_t>(index);
    return index >= 0 && place < apis.size() ? &apis[place] : nullptr;
}

PaError Pa_IsFormatSupported(const PaStreamParameters* input, const PaStreamParameters* output,
                             double rate) {
    FakePortAudio& fake = FakePortAudio::current();
    std::ostringstream call;
    call << "IsFormatSupported " << describe(input) << ", " << describe(output) << ", " << rate;
    fake.calls.push_back(call.str());
    if (fake.refusedRates.count(rate) != 0) return paInvalidSampleRate;
    return paSampleFormatNotSupported; // not a refusal of the rate
}

PaError Pa_OpenStream(PaStream** stream, const PaStreamParameters* input,
                      const PaStreamParameters* output, double rate, unsigned long frames,
                      PaStreamFlags flags, PaStreamCallback* callback, void* userData) {
    FakePortAudio& fake = FakePortAudio::current();
    std::ostringstream call;
    call << "OpenStream " << describe(input) << ", " << describe(output) << ", " << rate << ", "
         << frames << ", " << flags;
    fake.calls.push_back(call.str());
    fake.callback = callback;
    fake.userData = userData;
    if (fake.openResult == paNoError) *stream = &fakeStream;
    return fake.openResult;
}

PaError Pa_StartStream(PaStream* stream) {
    record("StartStream", stream);
    return FakePortAudio::current().startResult;
}

PaError Pa_StopStream(PaStream* stream) {
    return record("StopStream", stream);
}

PaError Pa_CloseStream(PaStream* stream) {
    return record("CloseStream", stream);
}
