// SPDX-License-Identifier: Zlib
#pragma once

#include <atomic>
#include <cstddef>
#include <span>

#include "base/EnvelopeShape.h"
#include "sound/LadderFilter.h"
#include "sound/MonophonicSynth.h"
#include "sound/WaveTables.h"

// The pitched voice: a wave table oscillator between saw and square, a second, slightly flat saw, a
// resonant low-pass filter with its own envelope, a tanh stage and an envelope for the level. There
// is no note-off: the patch sets the length of a note. 44100 samples a second, whatever the rate of
// the stream. The voices of a bank share a patch (PolyphonicSynth).
//
// The state is in single precision and rounded at each step of `render`; only the filter uses
// double precision.
class SimpleSynth : public MonophonicSynth {
public:
    static constexpr std::size_t bankSize = 32; // voices

    SimpleSynth();

    // Adds all voices of a bank that sound, in order: the same bits as calling render for one after
    // the other, but several times faster (VoiceKernel). Audio thread.
    static void renderAll(std::span<SimpleSynth, bankSize> bank, float* output,
                          std::int32_t frames);

    void render(float* output, std::int32_t frames) override;
    void noteOn(float frequency, std::int32_t sampleOffset) override;
    void setParameter(const std::string& name, float value, bool stored) override;
    std::int32_t parameterCount() const override;
    float parameter(std::int32_t index) const override;
    std::string parameterName(std::int32_t index) const override;

    // Whether a note sounds or waits for its start. A thread that reads true sees the whole note.
    bool isActive() const { return active.load(std::memory_order_acquire); }

private:
    friend class VoiceKernel;
    friend class VoiceStages;

    static constexpr float sampleRate = 44100;             // hertz
    static constexpr float envelopeStep = 0.000022675737f; // seconds a sample
    static constexpr float cutoffRange = 10975;            // hertz at a filterCutoff of 1
    static constexpr float cutoffTop = 11025;              // hertz at a full envelope
    static constexpr float cutoffFloor = 50;               // hertz, on top of everything
    static constexpr float outputGain = 0.5f;
    static constexpr float startFrequency = 440; // hertz

    // Attack, sustain and release of a level from 0 to 1; times in seconds from the note's start.
    struct Envelope {
        float attackEnd;
        float releaseStart;
        float releaseLength;
        float attackBend; // of envelopeShape
        float releaseBend;

        Envelope(float noteSeconds, float attackTime, float releaseTime, bool attackCurve,
                 bool releaseCurve);
        float at(float seconds) const;
    };

    // What all samples of a buffer share, computed before the first.
    struct Setting {
        float length; // seconds
        Envelope level;
        Envelope filter;
        float increment1; // table entries a sample
        float increment2;

        explicit Setting(const SimpleSynth& voice);
    };

    // A parameter's name, its field (one of the two is null) and the mapping of a control position.
    struct Parameter {
        const char* name;
        float SimpleSynth::*number;
        bool SimpleSynth::*flag;
        float (*map)(float position);
    };
    static const Parameter parameters[];

    bool stillWaits();
    float oscillators(const Setting& setting);
    float cutoffAt(const Setting& setting) const;

    std::atomic<bool> active = false;
    float waveAmount = 0;       // 0 all saw, 1 all square
    float detunedSawAmount = 0; // level of the second saw
    float filterCutoff = 0.5f;  // 0 to 1 of 10975 hertz
    float filterRes = 0;
    // If a curve is set, its attack rises late, or its release falls early.
    bool filterAttackCurve = false;
    bool filterReleaseCurve = false;
    float filterAttackTime = 0.25f; // fraction of the note
    float filterReleaseTime = 0.5f; // fraction of the rest of the note
    float filterEnvAmount = 0.01f;  // -1 closes the filter, 1 opens it
    bool attackCurve = false;
    bool releaseCurve = false;
    float attackTime = 0.25f; // fraction of the note
    float releaseTime = 0.5f; // fraction of the rest of the note
    float noteLength = 0.5f;  // half the note, in seconds
    float distGain = 1;       // before the tanh
    float octave = 1;         // factor of the frequency
    const WaveTables::Row* sawRow;
    const WaveTables::Row* squareRow;
    float phase1 = 0; // table entries, 0 to the length of a row
    float phase2 = 0;
    float frequency1 = startFrequency; // hertz
    float frequency2 = 439;            // hertz
    LadderFilter filter;
    float envelopePosition = 0; // seconds
    bool waiting = false;       // the note has not started
    std::int32_t waitSamples = 0;
};
