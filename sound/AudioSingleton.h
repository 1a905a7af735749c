// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <string>

#include "base/SharedValue.h"
#include "sound/PitchFile.h"
#include "sound/PolyphonicSynth.h"
#include "sound/SequencerCursor.h"
#include "sound/SimpleSynth.h"
#include "sound/Synthesizer.h"

// Owns everything audible: the clock, five banks of voices, four drums, the grid of notes and the
// pitches of the notes. The game writes notes; the audio thread calls process.
//
// Sample: 1/44100 of a second, whatever the rate of the stream. Stereo frame: a sample for each
// channel. Bar: 16 steps, about 2 seconds; the grid repeats every bar. Note: an index into the
// pitches. Track: a row of the grid; 0 to 3 are the banks "SeqBass", "SeqPad", "SeqHi" and
// "SeqDuck", 4 to 7 kick, clap, hat and crash. The bank "Bom" has no track.
//
// There are two threads and no lock: the main thread builds it and writes notes; the audio thread
// runs process and the bar events. Nothing on the audio thread allocates or waits.
class AudioSingleton : public SequencerCursor::Callback {
public:
    static constexpr std::int32_t tracks = 8;
    static constexpr std::int32_t steps = 16;
    static constexpr std::int32_t rest = -1; // no note

    // The patch file of each bank, in the folder "synthPatches".
    static constexpr std::array<const char*, 5> patchFiles = {
        "SeqBass.inl", "SeqPad.inl", "SeqHi.inl", "SeqDuck.inl", "Bom.inl"};

    class Callback {
    public:
        virtual ~Callback() = default;

        // A bar begins; a note written to step 0 now is played in this bar. Audio thread.
        virtual void onBar() = 0;
    };

    // The program's only object. The first call, on the main thread, builds it and reads patches
    // and pitches; it lives until the program exits.
    static AudioSingleton& instance();

    // Writes a note into a cell, or a rest if the cell holds that note already. On a drum's track
    // an even note is the normal hit and an odd note the alternate one. Any thread.
    void toggleStep(std::int32_t track, std::int32_t step, std::int32_t note);

    // Writes rests into all cells. Main thread.
    void clearSteps();

    // Starts a new bar at the next sample. Main thread.
    void rewindBar() { cursor.rewind(); }

    // Sets the listener for bars; not owned, may be null. Main thread. When the call returns, no
    // bar event of the previous listener is running; it waits for such an event to end.
    void setCallback(Callback* listener);

    // Plays the thump when a page turns: 110, 220 and 223 hertz at once. Main thread.
    void playBom();

    // Adds the sound to `frames` stereo frames (2 x frames floats, interleaved). Audio thread.
    void process(float* output, std::int32_t frames);

    // For tools: replace the pitches, or the patch of a bank (an index into patchFiles). No stream
    // may be running.
    void setPitches(const PitchTable& table) { pitches = table; }
    void loadPatch(std::size_t bank, const std::string& path) { synths[bank].loadPatch(path); }

    void stepReached(std::int32_t step, std::int32_t sampleOffset) override;

private:
    friend class Inspector;

    static constexpr std::size_t pitchedTracks = 4;

    AudioSingleton();

    void reportBar();

    SequencerCursor cursor;
    std::array<PolyphonicSynth<SimpleSynth>, patchFiles.size()> synths;
    std::array<std::unique_ptr<Synthesizer>, 4> drums;
    std::array<std::array<SharedValue<std::int32_t>, steps>, tracks> notes;
    PitchTable pitches = {}; // hertz
    std::atomic<Callback*> callback = nullptr;
    std::atomic<bool> inBar = false; // the audio thread may be using the callback
};
