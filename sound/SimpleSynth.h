// SPDX-License-Identifier: Zlib
#pragma once

#include <atomic>
#include <span>

#include "base/EnvelopeShape.h"
#include "sound/LadderFilter.h"
#include "sound/MonophonicSynth.h"
#include "sound/WaveTables.h"

// The pitched voice: a wave table oscillator between saw and square, a second saw beside it,
// slightly flat, a resonant low-pass with an envelope of its own, a tanh stage and an envelope of
// the level. There is no note-off: a note lasts as long as the patch says. 44100 samples a second,
// whatever the stream runs at. Banks of voices share a patch (PolyphonicSynth).
//
// The state is in single precision and rounded where the steps of `render` round; only the filter
// is in double.
class SimpleSynth : public MonophonicSynth {
public:
    SimpleSynth();

    // Adds all voices of a bank that sound, in order: what render would do with one after the
    // other, to the last bit, but several times faster if there are some (VoiceKernel). Audio
    // thread.
    static void renderAll(std::span<SimpleSynth> voices, float* output, std::int32_t frames);

    void render(float* output, std::int32_t frames) override;
    void noteOn(float frequency, std::int32_t sampleOffset) override;
    void setParameter(const std::string& name, float value, bool stored) override;
    std::int32_t parameterCount() const override;
    float parameter(std::int32_t index) const override;
    std::string parameterName(std::int32_t index) const override;

    // Whether a note sounds or waits for its beginning. Seen as true, all of the note is there.
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

    // Attack, sustain and release of a level from 0 to 1; times in seconds from the note's begin.
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

    // What a buffer's samples have in common, worked out at its beginning.
    struct Setting {
        float length; // seconds
        Envelope level;
        Envelope filter;
        float increment1; // table entries a sample
        float increment2;

        explicit Setting(const SimpleSynth& voice);
    };

    // A parameter's name, its field (one of the two is null) and how a control position becomes it.
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
    // A curve that is set rises late in an attack and falls early in a release.
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
    float distGain = 1;       // in front of the tanh
    float octave = 1;         // factor of the frequency
    const WaveTables::Row* sawRow;
    const WaveTables::Row* squareRow;
    float phase1 = 0; // table entries, 0 to the length of a row
    float phase2 = 0;
    float frequency1 = startFrequency; // hertz
    float frequency2 = 439;            // hertz
    LadderFilter filter;
    float envelopePosition = 0; // seconds
    bool waiting = false;       // the note has not begun
    std::int32_t waitSamples = 0;
};
