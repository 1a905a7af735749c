// SPDX-License-Identifier: Zlib
#include "sound/SimpleSynth.h"

#include <cmath>
#include <iterator>

#include "sound/HyperbolicTangent.h"
#include "sound/VoiceKernel.h"

static constexpr float detune = 0.999f;      // of the second oscillator
static constexpr float attackLimit = 0.999f; // so an attack never takes the whole note

static float asItIs(float position) {
    return position;
}

static float mapCutoff(float position) {
    return position * 0.5f + envelopeShape(position, lateRise) * 0.5f;
}

static float mapLength(float position) {
    return position * 0.95f + 0.05f;
}

static float mapGain(float position) {
    return position * 3.0f + 1.0f;
}

static float mapOctave(float position) {
    if (position < 0.9f) return 4.0f;
    if (position < 1.9f) return 2.0f;
    if (position < 2.9f) return 1.0f;
    if (position < 3.9f) return 0.5f;
    return 0.25f;
}

// In the order of the values in a patch file.
const SimpleSynth::Parameter SimpleSynth::parameters[] = {
    {"waveAmount", &SimpleSynth::waveAmount, nullptr, asItIs},
    {"filterCutoff", &SimpleSynth::filterCutoff, nullptr, mapCutoff},
    {"filterRes", &SimpleSynth::filterRes, nullptr, asItIs},
    {"filterAttackCurve", nullptr, &SimpleSynth::filterAttackCurve, asItIs},
    {"filterReleaseCurve", nullptr, &SimpleSynth::filterReleaseCurve, asItIs},
    {"filterAttackTime", &SimpleSynth::filterAttackTime, nullptr, asItIs},
    {"filterReleaseTime", &SimpleSynth::filterReleaseTime, nullptr, asItIs},
    {"filterEnvAmount", &SimpleSynth::filterEnvAmount, nullptr, asItIs},
    {"attackCurve", nullptr, &SimpleSynth::attackCurve, asItIs},
    {"releaseCurve", nullptr, &SimpleSynth::releaseCurve, asItIs},
    {"attackTime", &SimpleSynth::attackTime, nullptr, asItIs},
    {"releaseTime", &SimpleSynth::releaseTime, nullptr, asItIs},
    {"noteLength", &SimpleSynth::noteLength, nullptr, mapLength},
    {"distGain", &SimpleSynth::distGain, nullptr, mapGain},
    {"octave", &SimpleSynth::octave, nullptr, mapOctave},
    {"detunedSawAmount", &SimpleSynth::detunedSawAmount, nullptr, asItIs},
};

SimpleSynth::SimpleSynth()
    : sawRow(&WaveTables::instance().sawRow(startFrequency)),
      squareRow(&WaveTables::instance().squareRow(startFrequency)) {}

std::int32_t SimpleSynth::parameterCount() const {
    return static_cast<std::int32_t>(std::size(parameters));
}

float SimpleSynth::parameter(std::int32_t index) const {
    if (index < 0 || index >= parameterCount()) return 0;
    const Parameter& wanted = parameters[index];
    if (wanted.flag) return this->*wanted.flag ? 1.0f : 0.0f;
    return this->*wanted.number;
}

std::string SimpleSynth::parameterName(std::int32_t index) const {
    return index < 0 || index >= parameterCount() ? "" : parameters[index].name;
}

void SimpleSynth::setParameter(const std::string& name, float value, bool stored) {
    for (const Parameter& known : parameters) {
        if (name != known.name) continue;
        if (known.flag) {
            this->*known.flag = value > 0.5f;
        } else {
            this->*known.number = stored ? value : known.map(value);
        }
    }
}

void SimpleSynth::noteOn(float frequency, std::int32_t sampleOffset) {
    frequency1 = octave * frequency;
    frequency2 = frequency1 * detune;
    sawRow = &WaveTables::instance().sawRow(frequency1);
    squareRow = &WaveTables::instance().squareRow(frequency1);
    envelopePosition = 0;
    waiting = true;
    waitSamples = sampleOffset;
    active.store(true, std::memory_order_release); // last: publishes the note
}

SimpleSynth::Envelope::Envelope(float noteSeconds, float attackTime, float releaseTime,
                                bool attackCurve, bool releaseCurve)
    : attackEnd(attackTime * attackLimit * noteSeconds),
      releaseLength((noteSeconds - attackEnd) * releaseTime),
      attackBend(attackCurve ? lateRise : earlyRise),
      releaseBend(releaseCurve ? earlyRise : lateRise) {
    releaseStart = noteSeconds - (releaseLength + attackEnd) + attackEnd;
}

float SimpleSynth::Envelope::at(float seconds) const {
    if (seconds < attackEnd) return envelopeShape(seconds / attackEnd, attackBend);
    // Without a release, rounding could cause a division by 0 at the very end.
    if (seconds < releaseStart || releaseLength <= 0) return 1;
    return 1 - envelopeShape((seconds - releaseStart) / releaseLength, releaseBend);
}

SimpleSynth::Setting::Setting(const SimpleSynth& voice)
    : length(2 * voice.noteLength),
      level(length, voice.attackTime, voice.releaseTime, voice.attackCurve, voice.releaseCurve),
      filter(length, voice.filterAttackTime, voice.filterReleaseTime, voice.filterAttackCurve,
             voice.filterReleaseCurve),
      increment1(WaveTables::length / (sampleRate / voice.frequency1)),
      increment2(WaveTables::length / (sampleRate / voice.frequency2)) {}

void SimpleSynth::renderAll(std::span<SimpleSynth, bankSize> bank, float* output,
                            std::int32_t frames) {
    VoiceKernel::render(bank, output, frames);
}

void SimpleSynth::render(float* output, std::int32_t frames) {
    if (!isActive() || frames < 1) return;
    const Setting setting(*this);
    for (std::int32_t i = 0; i < frames; ++i) {
        if (stillWaits()) continue;
        envelopePosition += envelopeStep;
        if (envelopePosition > setting.length) {
            active.store(false, std::memory_order_release);
            return;
        }
        const float mix = oscillators(setting);
        filter.setCutoffAndResonance(cutoffAt(setting), filterRes);
        const float filtered = filter.process(mix);
        float out = hyperbolicTangent(distGain * filtered) * setting.level.at(envelopePosition) *
                    outputGain;
        if (!std::isfinite(out)) out = 0; // the filter is blowing up
        output[2 * i] += out;
        output[2 * i + 1] += out;
    }
}

// A note with offset 0 or 1 starts on sample 0; with offset N, on sample N - 1.
bool SimpleSynth::stillWaits() {
    if (!waiting) return false;
    --waitSamples;
    waiting = waitSamples > 0;
    return waiting;
}

static float readRow(const WaveTables::Row& row, float phase) {
    constexpr std::uint32_t wrap = WaveTables::length - 1;
    const auto index = static_cast<std::uint32_t>(phase);
    const float fraction = phase - static_cast<float>(index);
    return (1 - fraction) * row[index & wrap] + fraction * row[(index + 1) & wrap];
}

static float advance(float phase, float increment) {
    constexpr float length = WaveTables::length;
    phase += increment;
    if (phase > length) phase -= length;
    // Only for inaudible notes: an increment longer than a row, or a negative one.
    if (!(phase >= 0 && phase <= length)) {
        phase = std::fmod(phase, length);
        if (phase < 0) phase += length;
    }
    return phase;
}

float SimpleSynth::oscillators(const Setting& setting) {
    // An infinite or NaN frequency is silence.
    if (!std::isfinite(setting.increment1) || !std::isfinite(setting.increment2)) return 0;
    const float saw = readRow(*sawRow, phase1);
    const float square = readRow(*squareRow, phase1);
    float mix = (1 - waveAmount) * saw + waveAmount * square;
    if (detunedSawAmount > 0) mix += detunedSawAmount * readRow(*sawRow, phase2);
    phase1 = advance(phase1, setting.increment1);
    phase2 = advance(phase2, setting.increment2);
    return mix;
}

// In hertz. The envelope opens the filter towards its top, or closes it towards its floor.
float SimpleSynth::cutoffAt(const Setting& setting) const {
    const float base = filterCutoff * cutoffRange;
    const float envelope = filterEnvAmount * setting.filter.at(envelopePosition);
    const float reach = envelope >= 0 ? cutoffTop - base : base;
    return base + envelope * reach + cutoffFloor;
}
