// SPDX-License-Identifier: Zlib
// Renders the game's sound to a file, for authors of patches and tunes; see usage below.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <iostream>
#include <iterator>

#include "base/FilePath.h"
#include "base/Noise.h"
#include "sound/PatchFile.h"
#include "tools/CommandLine.h"
#include "tools/render_wav/SoundRenderer.h"

static constexpr const char* usage =
    "Usage: tarnwick-render note PATCH HERTZ WAV [options]    a note of a patch file\n"
    "       tarnwick-render drum DRUM WAV [options]           kick, clap, hat or crash\n"
    "       tarnwick-render bom WAV [options]                 the thump when a page turns\n"
    "       tarnwick-render music PITCHES BARS WAV [options]  the music of a play\n"
    "Writes a stereo WAV file with 44100 hertz, until the last note has ended. Options and "
    "defaults:\n"
    "  --bits 32|16       floats, or integers, clipped at -1 and 1 (32)\n"
    "  --buffer FRAMES    number of stereo frames to compute at once, 1 to 65536 (256)\n"
    "  --alternate        the second sound of a drum\n"
    "  --seed NUMBER      seed of the random numbers, for drums and music (1)\n"
    "  --speed SPEED      speed of the runner: fast, slow, or tiles per frame (fast)\n"
    "  --patches FOLDER   patches for music and bom, instead of the game's\n"
    "  --help, --version  print this text, or the version\n";

static constexpr std::int32_t mostBars = 3600;    // two hours, which fit in a WAV file
static constexpr std::int32_t mostFrames = 65536; // fewer than a bar has
static constexpr float highestPitch = 22050;      // hertz
static constexpr std::int32_t firstDrumTrack = 4;
static constexpr const char* drums[] = {"kick", "clap", "hat", "crash"};

static const CommandLine::KnownOptions options = {
    {"--bits", 1}, {"--buffer", 1}, {"--alternate", 0},
    {"--seed", 1}, {"--speed", 1},  {"--patches", 1},
};

// Renders what the command line asks for.
using Piece = std::function<void(SoundRenderer&)>;

static void requireFile(const FilePath& file) {
    if (!file.isOrdinaryFile()) throw std::runtime_error("no such file: " + file.text());
}

static void loadPatch(std::size_t bank, const FilePath& path) {
    requireFile(path);
    const std::int32_t count = SimpleSynth().parameterCount();
    const PatchFile patch(path.text(), count);
    const auto& values = patch.getValues();
    if (values.empty()) {
        throw std::runtime_error("not a patch: " + path.text() + ": line 23 needs the number " +
                                 std::to_string(count) +
                                 " in column 26, and lines 26 on need as many values");
    }
    for (std::int32_t i = 0; i < count; ++i) {
        const auto place = static_cast<std::size_t>(i);
        if (place < values.size() && values[place].index == i) continue;
        throw std::runtime_error(path.text() + ", line " + std::to_string(26 + i) +
                                 ": no number; lines 26 to " + std::to_string(25 + count) +
                                 " need one each");
    }
    AudioSingleton::instance().loadPatch(bank, path.text());
}

static void loadPatches(const CommandLine& line) {
    const FilePath game = FilePath::getDataDirectory().join("synthPatches");
    const FilePath folder(line.get("--patches", game.text()));
    for (std::size_t bank = 0; bank < AudioSingleton::patchFiles.size(); ++bank) {
        loadPatch(bank, folder.join(AudioSingleton::patchFiles[bank]));
    }
}

static void loadPitches(const FilePath& path) {
    requireFile(path);
    const PitchTable pitches = readPitches(path.text());
    for (std::size_t note = 0; note < pitches.size(); ++note) {
        if (pitches[note] > 0 && pitches[note] <= highestPitch) continue;
        throw std::runtime_error("note " + std::to_string(note) + " has no pitch in " +
                                 path.text());
    }
    AudioSingleton::instance().setPitches(pitches);
}

static Piece readNote(const CommandLine& line) {
    const auto hertz = line.readNumber<float>("HERTZ", line.getWord(2), 1, highestPitch);
    loadPatch(0, line.getWord(1));
    return [hertz](SoundRenderer& renderer) { renderer.playNote(hertz); };
}

static Piece readDrum(const CommandLine& line) {
    const auto* const drum = std::find(std::begin(drums), std::end(drums), line.getWord(1));
    if (drum == std::end(drums)) throw CommandLine::Error("unknown drum " + line.getWord(1));
    const auto track = firstDrumTrack + static_cast<std::int32_t>(drum - std::begin(drums));
    const bool alternate = line.has("--alternate");
    return [=](SoundRenderer& renderer) { renderer.playDrum(track, alternate); };
}

static Piece readBom(const CommandLine& line) {
    loadPatches(line);
    return [](SoundRenderer& renderer) { renderer.playBom(); };
}

static float readSpeed(const std::string& text) {
    if (text == "fast") return 1;
    if (text == "slow") return 0;
    return CommandLine::readNumber<float>("--speed", text, 0, HUGE_VALF);
}

static Piece readMusic(const CommandLine& line) {
    const auto bars = line.readNumber<std::int32_t>("BARS", line.getWord(2), 1, mostBars);
    const float speed = readSpeed(line.get("--speed", "fast"));
    loadPatches(line);
    loadPitches(line.getWord(1));
    return [=](SoundRenderer& renderer) { renderer.playMusic(bars, speed); };
}

static Piece readPiece(const CommandLine& line) {
    if (line.isCommand("note", 4, {"--bits", "--buffer"})) return readNote(line);
    if (line.isCommand("drum", 3, {"--bits", "--buffer", "--alternate", "--seed"})) {
        return readDrum(line);
    }
    if (line.isCommand("bom", 2, {"--bits", "--buffer", "--patches"})) return readBom(line);
    if (line.isCommand("music", 4, {"--bits", "--buffer", "--seed", "--speed", "--patches"})) {
        return readMusic(line);
    }
    throw CommandLine::Error("unknown command " + line.getWord(0));
}

static WavFile::Samples readSamples(const std::string& bits) {
    if (bits == "32") return WavFile::Samples::float32;
    if (bits == "16") return WavFile::Samples::int16;
    throw CommandLine::Error("--bits cannot be \"" + bits + "\"");
}

// Reads the command line and all input files before it creates the output file.
static int run(const CommandLine& line) {
    const auto seed = line.readNumber<std::uint32_t>("--seed", line.get("--seed", "1"), 0, ~0U);
    const WavFile::Samples samples = readSamples(line.get("--bits", "32"));
    const auto buffer =
        line.readNumber<std::int32_t>("--buffer", line.get("--buffer", "256"), 1, mostFrames);
    const Piece play = readPiece(line);

    const std::string& path = line.getLastWord();
    WavFile file(path, samples);
    if (file.isGood()) {
        SoundRenderer renderer(file, buffer);
        noiseSeed() = seed; // after AudioSingleton has drawn its own numbers
        play(renderer);
        if (file.close()) {
            const auto frames = renderer.getFrames();
            std::printf("%lld frames, %.3f s, peak %.4f\n", static_cast<long long>(frames),
                        static_cast<double>(frames) / 44100, renderer.getPeak());
            return 0;
        }
    }
    throw std::runtime_error("cannot write " + path + ": " + file.getFailure());
}

int main(int argc, char* argv[]) {
    return runProgram(argc, argv, "tarnwick-render", usage, options, 1, run);
}
