// SPDX-License-Identifier: Zlib
#include "tools/replay/TraceRun.h"

#include <GL/gl.h>

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "screens/GamePlay.h"
#include "tools/Inspector.h"
#include "tools/PngFile.h"

TraceRun::TraceRun(const InputScript& played, const RunLevel& level, const Options& chosen,
                   const Outputs& wanted)
    : OfflineRun(played, level, chosen), outputs(wanted) {}

void TraceRun::play() {
    open();
    runOffline();
    trace.close();
    if (!outputs.trace.empty() && !trace) failure = "cannot write " + outputs.trace;
    if (sound && !sound->close()) failure = sound->getFailure();
    if (!failure.empty()) throw std::runtime_error(failure);
}

void TraceRun::open() {
    if (!outputs.pictures.empty()) {
        std::error_code problem;
        std::filesystem::create_directories(outputs.pictures, problem);
        if (problem) {
            throw std::runtime_error("cannot make " + outputs.pictures + ": " + problem.message());
        }
    }
    if (!outputs.sound.empty()) {
        sound = std::make_unique<WavFile>(outputs.sound, WavFile::Samples::int16);
        if (!sound->isGood()) {
            throw std::runtime_error("cannot write " + outputs.sound + ": " + sound->getFailure());
        }
    }
    if (outputs.trace.empty()) return;
    trace.open(outputs.trace);
    trace << "# frame state x y vx vy flags: A airborne, K kicking, R or L facing, F finished\n";
    if (!trace) throw std::runtime_error("cannot write " + outputs.trace);
}

void TraceRun::takeFrame(const std::vector<float>& samples) {
    if (trace.is_open()) writeTrace();
    const bool regular = outputs.every > 0 && frame % outputs.every == 0;
    if (!outputs.pictures.empty() && (regular || outputs.frames.count(frame))) {
        writePicture();
    }
    if (sound) sound->append(samples.data(), static_cast<std::int32_t>(samples.size() / 2));
}

static void append(std::string& line, float number) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr; // exactly
    line.append(" ").append(digits, end);
}

void TraceRun::writeTrace() {
    GameState* state = Inspector::state(*application);
    std::string line = std::to_string(frame) + " " + (state ? state->getName() : "-");
    if (GamePlay* play = findPlay()) {
        const Inspector::Motion motion = Inspector::motion(Inspector::player(*play));
        append(line, motion.x);
        append(line, motion.y);
        append(line, motion.vx);
        append(line, motion.vy);
        line += " ";
        line += motion.airborne ? 'A' : '-';
        line += motion.kicking ? 'K' : '-';
        line += motion.facingRight ? 'R' : 'L';
        line += Inspector::isFinished(*play) ? 'F' : '-';
    }
    trace << line << "\n";
}

void TraceRun::writePicture() {
    const SDL_Surface* window = SDL_GetVideoSurface();
    const int rowBytes = window->w * 3;
    std::vector<unsigned char> pixels(static_cast<std::size_t>(rowBytes) *
                                      static_cast<std::size_t>(window->h));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, window->w, window->h, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    glPixelStorei(GL_PACK_ALIGNMENT, 4);

    char name[32];
    std::snprintf(name, sizeof name, "%06u.png", frame);
    const std::string path = outputs.pictures + "/" + name;
    // GL's first row is the bottom one, as that of a negative step.
    if (!writePng(path, window->w, window->h, pixels.data(), -rowBytes)) {
        failure = "cannot write " + path;
    }
}
