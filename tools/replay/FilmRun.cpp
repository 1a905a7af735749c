// SPDX-License-Identifier: Zlib
#include "tools/replay/FilmRun.h"

#include <GL/gl.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>

static constexpr std::uint32_t shownEvery = 20; // frames; showing all would wait for the screen
static constexpr int barWidth = 40;             // letters

FilmRun::FilmRun(const InputScript& played, const RunLevel& level, const Options& chosen,
                 const std::string& path, int filmWidth, int filmHeight)
    : OfflineRun(played, level, chosen), width(filmWidth), height(filmHeight),
      film(path, width, height),
      pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4),
      onTerminal(isatty(STDERR_FILENO) == 1) {}

void FilmRun::play() {
    runOffline();
    if (onTerminal) std::fprintf(stderr, "\r%*s\r", barWidth + 40, "");
    if (closed) throw std::runtime_error("the window was closed before the film was finished");
    film.finish();
}

void FilmRun::takeFrame(const std::vector<float>& samples) {
    const SDL_Surface* window = SDL_GetVideoSurface();
    if (window->w != width || window->h != height) {
        throw std::runtime_error(
            "the window did not get the size of the film; try a smaller --size");
    }
    glReadPixels(0, 0, width, height, GL_BGRA, GL_UNSIGNED_BYTE, pixels.data());
    film.addFrame(pixels, samples);
    if (onTerminal) showProgress();
}

bool FilmRun::finishFrame() {
    OfflineRun::finishFrame();
    return frame % shownEvery == 0;
}

void FilmRun::showProgress() {
    const auto now = std::chrono::steady_clock::now();
    if (now - lastProgress < std::chrono::milliseconds(200)) return;
    lastProgress = now;
    const double done = (frame + 1.0) / script.getEnd();
    const double seconds = std::chrono::duration<double>(now - start).count();
    const int filled = static_cast<int>(done * barWidth);
    std::string bar(static_cast<std::size_t>(filled), '#');
    bar.resize(barWidth, '.');
    std::fprintf(stderr, "\r[%s] %3.0f %%, %.0f s left   ", bar.c_str(), done * 100,
                 seconds / done * (1 - done));
}
