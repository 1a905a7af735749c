// SPDX-License-Identifier: Zlib
// Feeds the readers of files and arguments with data from libFuzzer: fuzz TARGET [OPTION OF
// LIBFUZZER...] CORPUS. A report of a sanitizer, a hang or too much memory is a fault; what is read
// does not matter.
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "app/FatalError.h"
#include "app/LaunchOptions.h"
#include "app/Settings.h"
#include "drawing/ImageLoader.h"
#include "drawing/OpenGLFont.h"
#include "drawing/TextLayout.h"
#include "platform/Platform.h"
#include "sound/PatchFile.h"
#include "sound/PitchFile.h"
#include "sound/SimpleSynth.h"
#include "tools/levelcheck/Zones.h"
#include "tools/replay/RunLink.h"

// A folder in memory for this process. Its end removes the folder.
static const std::string& folder() {
    struct Folder {
        std::string path = "/dev/shm/fuzz.XXXXXX";
        Folder() { mkdtemp(path.data()); }
        ~Folder() { std::filesystem::remove_all(path); }
    };
    static const Folder made;
    return made.path;
}

static std::string write(const std::string& bytes, const std::string& name) {
    const std::filesystem::path path = folder() + "/" + name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

static void fuzzSettings(const std::string& bytes) {
    write(bytes, "Corvale/Corvale.conf");
    Settings();
}

static void fuzzArguments(const std::string& bytes) {
    std::istringstream lines(bytes);
    std::vector<std::string> arguments;
    for (std::string line; std::getline(lines, line);) arguments.push_back(line);
    static const Settings settings;
    try {
        LaunchOptions(arguments, settings);
    } catch (const FatalError&) {}
}

// A few samples of these notes, with what the patch makes of them, one by one and side by side. A
// bank would load the patch into all voices, which takes longer than the rest.
static void play(const std::string& patch, const std::vector<float>& notes) {
    static constexpr std::int32_t frames = 8;
    float output[2 * frames] = {};
    std::array<SimpleSynth, SimpleSynth::bankSize> bank;
    const PatchFile file(patch, bank[0].parameterCount());
    for (std::size_t note = 0; note < notes.size(); ++note) {
        for (const PatchFile::Value& value : file.getValues()) {
            bank[note].setParameter(bank[0].parameterName(value.index), value.number, true);
        }
        bank[note].noteOn(notes[note], 0);
    }
    for (int buffer = 0; buffer < 2; ++buffer) SimpleSynth::renderAll(bank, output, frames);
}

static void fuzzPatch(const std::string& bytes) {
    play(write(bytes, "patch.inl"), {220, 110});
}

static void fuzzPitches(const std::string& bytes) {
    const PitchTable pitches = readPitches(write(bytes, "pitch.txt"));
    play("", {pitches.begin(), pitches.end()});
}

static void fuzzPicture(const std::string& bytes) {
    const LoadedImage image = ImageLoader().loadFromMemory(bytes.data(), bytes.size());
    if (image.pixels && image.width * std::uint64_t{image.height} > 1 << 26) std::abort();
}

static void fuzzFont(const std::string& bytes) {
    write(bytes, "Windows/Fonts/font.ttf");
    OpenGLFont::startLibrary();
    const OpenGLFont font("font.ttf", 1); // few atlases are large
    if (font.isValid()) font.draw("Speed: 88mph", 0, 0, 100, 1, 1, 1, 1, 1);
}

// Five numbers, then the text. Three of them are the widths of the font's characters.
static void fuzzWrap(const std::string& bytes) {
    float numbers[5] = {};
    if (bytes.size() < sizeof numbers) return;
    std::memcpy(numbers, bytes.data(), sizeof numbers);
    const std::vector<FontGlyph> font = {{'a', 0, 0, 8, 0, numbers[2]},
                                         {' ', 0, 0, 8, 0, numbers[3]},
                                         {'b', 0, 0, 8, 0, numbers[4]}};
    breakIntoLines(font, bytes.substr(sizeof numbers), numbers[0], numbers[1]);
}

static void fuzzReplay(const std::string& bytes) {
    std::istringstream source(bytes);
    InputScript script;
    std::string failure;
    if (!script.read(source, failure)) return;
    for (std::uint32_t frame = 0; frame < 100; ++frame) script.pressesBefore(frame);
}

// Most inputs are links. The others are made into links, which takes longer, so that the letters
// need not be guessed.
static void fuzzLink(const std::string& bytes) {
    if (bytes.empty()) return;
    try {
        const bool links = bytes.front() % 32 != 0;
        RunLink::read(links ? std::string(RunLink::mark) + bytes.substr(1) : RunLink::of(bytes));
    } catch (const std::runtime_error&) {}
}

static void fuzzZones(const std::string& bytes) {
    Zones zones;
    zones.read(bytes);
    zones.describe(60, 984);
}

static const std::map<std::string, void (*)(const std::string&)> targets = {
    {"settings", fuzzSettings}, {"arguments", fuzzArguments}, {"patch", fuzzPatch},
    {"pitches", fuzzPitches},   {"picture", fuzzPicture},     {"font", fuzzFont},
    {"wrap", fuzzWrap},         {"replay", fuzzReplay},       {"zones", fuzzZones},
    {"link", fuzzLink}};
static void (*target)(const std::string&) = nullptr;

// Removes the first argument, the target.
extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    const auto found = *count > 1 ? targets.find((*arguments)[1]) : targets.end();
    if (found == targets.end()) {
        std::cerr << "usage: fuzz TARGET [OPTION...] CORPUS; the targets are";
        for (const auto& [name, function] : targets) std::cerr << " " << name;
        std::cerr << std::endl;
        std::exit(2);
    }
    target = found->second;
    for (int i = 1; i < *count; ++i) (*arguments)[i] = (*arguments)[i + 1];
    --*count;
    Platform::setEnvironment("XDG_CONFIG_HOME", folder());
    Platform::setEnvironment("SystemDrive", folder());
    Platform::setEnvironment("DISPLAY", "none");
    std::cout.setstate(std::ios::failbit); // what the readers print
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    target(std::string(bytes, bytes + size));
    return 0;
}
