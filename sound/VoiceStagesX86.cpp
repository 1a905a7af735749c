// SPDX-License-Identifier: Zlib
#include <limits>

#include "sound/LadderFilter.h"
#include "sound/SimpleSynth.h"
#include "sound/VoiceStages.h"
#include "sound/VoiceVectors.h"

// Renders `lanes * registers` voices side by side. Each chunk of frames goes through the stages of
// SimpleSynth::render, one stage for all voices and frames before the next:
//
//   1. followTime   the time, both envelopes (Envelope::at), the cutoff (cutoffAt), and where the
//                   oscillators read (phases of readRow, advance)
//      readWaves    the oscillators (oscillators), and the filter's coefficients
//                   (LadderFilter::setCutoffAndResonance)
//   2. filter       LadderFilter::process, without its recovery
//   3. drive        tanh, level and gain; and the samples sorted by voice instead of by frame
//
// All operations come in the order of the scalar voice, so the bits are the same; a choice between
// two values computes both. In the filter each of about twenty operations waits for the one before,
// so two registers of voices are faster: one computes while the other waits.
template <std::size_t lanes, std::size_t registers>
class VoiceStages::Renderer {
public:
    static constexpr std::size_t width = lanes * registers; // voices

    static void run(VoiceLanes& voices, std::size_t frames) { runStages(voices, frames); }

    // The same with AVX2.
    [[gnu::target("avx2")]] static void runAvx2(VoiceLanes& voices, std::size_t frames) {
        runStages(voices, frames);
    }

private:
    using Vector = Vectors<lanes>;
    using Floats = typename Vector::Floats;
    using Ints = typename Vector::Ints;
    using HalfFloats = typename Vector::HalfFloats;
    using Doubles = typename Vector::Doubles;
    static constexpr std::size_t half = lanes / 2;
    static constexpr std::size_t ladders = 2 * registers;
    static constexpr std::size_t chunkFrames = 16;

    // `drive` writes as many frames at a time as there are lanes, beyond the last frame if need be,
    // and must stay inside the block.
    static_assert(VoiceLanes::blockFrames % chunkFrames == 0 && chunkFrames % lanes == 0);

    // What the stages pass on: a number for each frame and voice.
    struct alignas(32) Chunk {
        float level[chunkFrames][width];
        float cutoff[chunkFrames][width];
        std::uint32_t read1[chunkFrames][width]; // indices in WaveTables::reads
        std::uint32_t read2[chunkFrames][width];
        float fraction1[chunkFrames][width];
        float fraction2[chunkFrames][width];
        float sound[chunkFrames][width]; // the filter's input, then its output
        double p[chunkFrames][width];    // coefficients of the filter
        double r[chunkFrames][width];
    };

    struct Envelope {
        Floats attackEnd;
        Floats releaseStart;
        Floats releaseLength;
        Floats attackBend;
        Floats releaseBend;
    };

    // One of an envelope's three parts: origin + slope * shape((time - begin) / length). The middle
    // part, at level 1, is a release of infinite length. Origin and slope are 0, 1 or -1, so they
    // round nothing.
    struct Segment {
        Floats begin;
        Floats length;
        Floats bend;
        Floats origin;
        Floats slope;
    };

    VECTOR_INLINE void runStages(VoiceLanes& voices, std::size_t frames) {
        Chunk chunk = {};
        for (std::size_t start = 0; start < frames; start += chunkFrames) {
            const std::size_t left = frames - start;
            const std::size_t count = left < chunkFrames ? left : chunkFrames;
            for (std::size_t at = 0; at < width; at += lanes) {
                followTime(voices, chunk, at, count);
                readWaves(voices, chunk, at, count);
            }
            filter(voices, chunk, count);
            for (std::size_t at = 0; at < width; at += lanes) {
                drive(voices, chunk, at, count, start);
            }
        }
    }

    VECTOR_INLINE Floats floatsAt(const VoiceLanes::Lanes<float>& numbers, std::size_t at) {
        return loadVector<Floats>(&numbers[at]);
    }

    VECTOR_INLINE Floats all(float number) { return Floats{} + number; }

    VECTOR_INLINE Envelope envelopeOf(const VoiceLanes::Envelope& voices, std::size_t at) {
        return {floatsAt(voices.attackEnd, at), floatsAt(voices.releaseStart, at),
                floatsAt(voices.releaseLength, at), floatsAt(voices.attackBend, at),
                floatsAt(voices.releaseBend, at)};
    }

    VECTOR_INLINE Segment segmentAt(const Envelope& envelope, Floats time) {
        const Ints rises = time < envelope.attackEnd;
        const Ints holds = time < envelope.releaseStart;
        const Floats never = all(std::numeric_limits<float>::infinity());
        return {(rises | holds) ? all(0) : envelope.releaseStart,
                rises ? envelope.attackEnd : (holds ? never : envelope.releaseLength),
                rises ? envelope.attackBend : envelope.releaseBend, rises ? all(0) : all(1),
                rises ? all(1) : all(-1)};
    }

    VECTOR_INLINE Floats valueAt(const Segment& segment, Floats time) {
        const Floats x = (time - segment.begin) / segment.length;
        return segment.origin + segment.slope * (x / ((x - 1) * segment.bend + x));
    }

    // Whether any of these voices may enter another segment between two times.
    VECTOR_INLINE bool changesSegment(const Envelope& envelope, Floats from, Floats to) {
        const Ints passes = ((from < envelope.attackEnd) ^ (to < envelope.attackEnd)) |
                            ((from < envelope.releaseStart) ^ (to < envelope.releaseStart));
        std::int32_t any = 0;
        for (std::size_t i = 0; i < lanes; ++i) any |= passes[i];
        return any != 0;
    }

    VECTOR_INLINE Floats cutoffOf(Floats base, Floats envelope) {
        const Floats reach = envelope >= 0 ? SimpleSynth::cutoffTop - base : base;
        return base + envelope * reach + SimpleSynth::cutoffFloor;
    }

    // Stores the table entry at the phase, returns the fraction after it, and advances the phase.
    VECTOR_INLINE Floats follow(Floats& phase, Floats increment, Ints firstRead,
                                std::uint32_t* read) {
        const Ints entry = __builtin_convertvector(phase, Ints);
        const Floats fraction = phase - __builtin_convertvector(entry, Floats);
        storeVector(read, (entry & (WaveTables::length - 1)) + firstRead);
        phase += increment;
        const Ints over = phase > WaveTables::length;
        phase -= over ? all(WaveTables::length) : all(0);
        return fraction;
    }

    VECTOR_INLINE void followTime(VoiceLanes& voices, Chunk& to, std::size_t at,
                                  std::size_t frames) {
        const Envelope level = envelopeOf(voices.level, at);
        const Envelope filter = envelopeOf(voices.filter, at);
        const Floats amount = floatsAt(voices.filterEnvAmount, at);
        const Floats base = floatsAt(voices.cutoffBase, at);
        const Floats increment1 = floatsAt(voices.increment1, at);
        const Floats increment2 = floatsAt(voices.increment2, at);
        const Ints firstRead = loadVector<Ints>(&voices.firstRead[at]);
        Floats phase1 = floatsAt(voices.phase1, at);
        Floats phase2 = floatsAt(voices.phase2, at);
        Floats time = floatsAt(voices.envelopePosition, at);
        // Segments change rarely, so they are chosen once a chunk unless one may end in it. The
        // latest time is estimated high, to allow for rounding.
        const Floats end = time * 1.00001f + 2 * chunkFrames * SimpleSynth::envelopeStep;
        const bool changes = changesSegment(level, time, end) || changesSegment(filter, time, end);
        Segment levelNow = segmentAt(level, time);
        Segment filterNow = segmentAt(filter, time);
        for (std::size_t i = 0; i < frames; ++i) {
            time += SimpleSynth::envelopeStep;
            if (changes) {
                levelNow = segmentAt(level, time);
                filterNow = segmentAt(filter, time);
            }
            storeVector(&to.level[i][at], valueAt(levelNow, time));
            storeVector(&to.cutoff[i][at], cutoffOf(base, amount * valueAt(filterNow, time)));
            storeVector(&to.fraction1[i][at],
                        follow(phase1, increment1, firstRead, &to.read1[i][at]));
            storeVector(&to.fraction2[i][at],
                        follow(phase2, increment2, firstRead, &to.read2[i][at]));
        }
        storeVector(&voices.envelopePosition[at], time);
        storeVector(&voices.phase1[at], phase1);
        storeVector(&voices.phase2[at], phase2);
    }

    // The saw, next saw, square and next square of each voice; one load reads all four of a voice.
    VECTOR_INLINE void readAll(const WaveTables::Read* waves, const std::uint32_t* reads,
                               Floats (&entries)[4]) {
        using Four = Vectors<4>::Floats;
#pragma GCC unroll 4
        for (std::size_t i = 0; i < 4; ++i) {
            const Four low = loadVector<Four>(&waves[reads[i]].saw);
            if constexpr (lanes == 4) {
                entries[i] = low;
            } else {
                const Four high = loadVector<Four>(&waves[reads[i + 4]].saw);
                entries[i] = __builtin_shufflevector(low, high, 0, 1, 2, 3, 4, 5, 6, 7);
            }
        }
        transposeFour<Vector>(entries);
    }

    VECTOR_INLINE Doubles widen(const float* numbers) {
        return __builtin_convertvector(loadVector<HalfFloats>(numbers), Doubles);
    }

    VECTOR_INLINE void readWaves(const VoiceLanes& voices, Chunk& to, std::size_t at,
                                 std::size_t frames) {
        const WaveTables::Read* waves = WaveTables::instance().reads();
        const Floats squareAmount = floatsAt(voices.waveAmount, at);
        const Floats sawAmount = 1 - squareAmount;
        const Floats detunedAmount = floatsAt(voices.detunedSawAmount, at);
        for (std::size_t i = 0; i < frames; ++i) {
            Floats entries[4];
            readAll(waves, &to.read1[i][at], entries);
            const Floats f1 = loadVector<Floats>(&to.fraction1[i][at]);
            const Floats saw = (1 - f1) * entries[0] + f1 * entries[1];
            const Floats square = (1 - f1) * entries[2] + f1 * entries[3];
            const Floats mix = sawAmount * saw + squareAmount * square;
            readAll(waves, &to.read2[i][at], entries);
            const Floats f2 = loadVector<Floats>(&to.fraction2[i][at]);
            const Floats detuned = (1 - f2) * entries[0] + f2 * entries[1];
            storeVector(&to.sound[i][at], detunedAmount > 0 ? mix + detunedAmount * detuned : mix);
            computeCoefficients(voices, to, i, at);
            computeCoefficients(voices, to, i, at + half);
        }
    }

    VECTOR_INLINE void computeCoefficients(const VoiceLanes& voices, Chunk& to, std::size_t i,
                                           std::size_t at) {
        const Doubles resonance = loadVector<Doubles>(&voices.resonance[at]);
        const Doubles given = widen(&to.cutoff[i][at]);
        const Doubles cutoff =
            given < LadderFilter::lowestCutoff ? Doubles{} + LadderFilter::lowestCutoff : given;
        const Doubles f = (cutoff + cutoff) / 44100.0;
        const Doubles p = (1.8 - 0.8 * f) * f;
        const Doubles t = (1.0 - p) * 1.386249;
        const Doubles t2 = t * t + 12.0;
        storeVector(&to.p[i][at], p);
        storeVector(&to.r[i][at], resonance * (t2 + 6.0 * t) / (t2 - 6.0 * t));
    }

    VECTOR_INLINE void filter(VoiceLanes& voices, Chunk& through, std::size_t frames) {
        Doubles oldX[ladders], y1[ladders], y2[ladders], y3[ladders], y4[ladders];
#pragma GCC unroll 8
        for (std::size_t i = 0; i < ladders; ++i) {
            oldX[i] = loadVector<Doubles>(&voices.oldX[i * half]);
            y1[i] = loadVector<Doubles>(&voices.y1[i * half]);
            y2[i] = loadVector<Doubles>(&voices.y2[i * half]);
            y3[i] = loadVector<Doubles>(&voices.y3[i * half]);
            y4[i] = loadVector<Doubles>(&voices.y4[i * half]);
        }
        for (std::size_t frame = 0; frame < frames; ++frame) {
#pragma GCC unroll 8
            for (std::size_t i = 0; i < ladders; ++i) {
                float* sound = &through.sound[frame][i * half];
                const Doubles p = loadVector<Doubles>(&through.p[frame][i * half]);
                const Doubles r = loadVector<Doubles>(&through.r[frame][i * half]);
                const Doubles k = p + p - 1.0;
                const Doubles x = widen(sound) - r * y4[i];
                const Doubles next1 = p * x + p * oldX[i] - k * y1[i];
                const Doubles next2 = p * next1 + p * y1[i] - k * y2[i];
                const Doubles next3 = p * next2 + p * y2[i] - k * y3[i];
                const Doubles next4 = p * next3 + p * y3[i] - k * y4[i];
                oldX[i] = x;
                y1[i] = next1;
                y2[i] = next2;
                y3[i] = next3;
                y4[i] = next4 - next4 * next4 * next4 / 6.0;
                storeVector(sound, __builtin_convertvector(y4[i], HalfFloats));
            }
        }
#pragma GCC unroll 8
        for (std::size_t i = 0; i < ladders; ++i) {
            storeVector(&voices.oldX[i * half], oldX[i]);
            storeVector(&voices.y1[i * half], y1[i]);
            storeVector(&voices.y2[i * half], y2[i]);
            storeVector(&voices.y3[i * half], y3[i]);
            storeVector(&voices.y4[i * half], y4[i]);
        }
    }

    // Takes as many frames at a time as there are lanes: a square to transpose. The last square may
    // go beyond the frames asked for, up to the end of the chunk.
    VECTOR_INLINE void drive(const VoiceLanes& voices, const Chunk& from, std::size_t at,
                             std::size_t frames, std::size_t start) {
        const Floats gain = floatsAt(voices.distGain, at);
        for (std::size_t first = 0; first < frames; first += lanes) {
            Floats square[lanes];
#pragma GCC unroll 8
            for (std::size_t i = 0; i < lanes; ++i) {
                const Floats filtered = loadVector<Floats>(&from.sound[first + i][at]);
                const Floats level = loadVector<Floats>(&from.level[first + i][at]);
                const Floats out =
                    tanhOfLanes<Vector>(gain * filtered) * level * SimpleSynth::outputGain;
                square[i] = out - out == 0 ? out : all(0); // the filter blows up
            }
            transpose(square);
#pragma GCC unroll 8
            for (std::size_t i = 0; i < lanes; ++i) {
                storeVector(voices.sound[at + i] + start + first, square[i]);
            }
        }
    }

    VECTOR_INLINE void transpose(Floats (&square)[lanes]) {
        transposeFour<Vector>(square);
        if constexpr (lanes == 8) {
            transposeFour<Vector>(square + 4);
#pragma GCC unroll 4
            for (std::size_t i = 0; i < 4; ++i) {
                const Floats a = square[i];
                const Floats b = square[i + 4];
                square[i] = __builtin_shufflevector(a, b, 0, 1, 2, 3, 8, 9, 10, 11);
                square[i + 4] = __builtin_shufflevector(a, b, 4, 5, 6, 7, 12, 13, 14, 15);
            }
        }
    }
};

VoiceStages::Level VoiceStages::best() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") ? Level::avx2 : Level::sse2;
}

std::size_t VoiceStages::width(Level level, std::size_t voices) {
    if (level == Level::scalar || voices < 2) return 0;
    if (voices <= 4) return 4;
    return voices <= 8 || level == Level::sse2 ? 8 : 16;
}

void VoiceStages::run(Level level, std::size_t width, VoiceLanes& lanes, std::size_t frames) {
    const bool avx2 = level == Level::avx2;
    switch (width) {
    case 4:
        return avx2 ? Renderer<4, 1>::runAvx2(lanes, frames) : Renderer<4, 1>::run(lanes, frames);
    case 8:
        return avx2 ? Renderer<8, 1>::runAvx2(lanes, frames) : Renderer<4, 2>::run(lanes, frames);
    case 16: return Renderer<8, 2>::runAvx2(lanes, frames);
    }
}

void VoiceStages::add(std::span<const float* const> sounds, float* output, std::size_t frames) {
    using Four = Vectors<4>::Floats;
    std::size_t i = 0;
    for (; i + 4 <= frames; i += 4) {
        Four firstTwo = loadVector<Four>(output + 2 * i);
        Four lastTwo = loadVector<Four>(output + 2 * i + 4);
        for (const float* sound : sounds) {
            const Four samples = loadVector<Four>(sound + i);
            firstTwo += Vectors<4>::zipLow(samples, samples);
            lastTwo += Vectors<4>::zipHigh(samples, samples);
        }
        storeVector(output + 2 * i, firstTwo);
        storeVector(output + 2 * i + 4, lastTwo);
    }
    for (; i < frames; ++i) {
        for (const float* sound : sounds) {
            output[2 * i] += sound[i];
            output[2 * i + 1] += sound[i];
        }
    }
}
