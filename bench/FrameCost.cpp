// SPDX-License-Identifier: Zlib
// What a frame of play costs, up to the moment at which GL has finished it, along a run through the
// shipped level. Each frame of the game takes turns with one that leaves nothing out,
// and in the end with one that has the vortex on top; so whatever else the machine does weighs on
// all alike. Compared is the time that the program's threads, the software GL's included, spend on
// the processor. Prints the medians. Fails if the game's frame costs more than it should against
// those.
#include <GL/glew.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <iomanip>
#include <iostream>
#include <vector>

#include "app/Application.h"
#include "base/Noise.h"
#include "drawing/OpenGLDrawer.h"
#include "screens/GamePlay.h"
#include "tests/support/GoalRun.h"
#include "tests/support/LiteralPlay.h"
#include "tools/Inspector.h"

static constexpr double mostOfLiteral = 0.75; // of the frame with nothing left out
static constexpr double mostOfVortex = 1.3;   // the vortex's last frames, of those without it
static constexpr double goal = 14;            // ms on an idle machine of two cores; told only

static constexpr std::size_t stretches = 4;      // of the run, spread over it
static constexpr std::size_t stretchFrames = 32; // in a row
static constexpr int vortexFrames = 100;
static constexpr int vortexDrawings = 200; // one less than it takes to end the play

using Run = std::vector<GoalRun::Frame>;

struct FrameTime {
    double passed;    // ms until GL had finished it
    double processor; // ms of all threads
};

// Draws a frame as the main loop does.
template <typename Play>
static FrameTime drawFrame(OpenGLDrawer& drawer, Play& play) {
    glFinish();
    const auto begin = std::chrono::steady_clock::now();
    const std::clock_t processorBegin = std::clock();
    drawer.beginFrame();
    play.draw(drawer);
    glFinish();
    const std::chrono::duration<double, std::milli> passed =
        std::chrono::steady_clock::now() - begin;
    const auto ticks = static_cast<double>(std::clock() - processorBegin);
    drawer.endFrame();
    return {passed.count(), ticks * 1000 / CLOCKS_PER_SEC};
}

static double median(std::vector<double> times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

static bool report(const char* what, double time, double base, double most) {
    const bool good = time <= base * most;
    std::cout << what << time << " ms of " << base << " ms of processor, " << time / base
              << " of it, at most " << most << (good ? "" : ": TOO MUCH") << std::endl;
    return good;
}

static bool compareWithLiteral(OpenGLDrawer& drawer, GamePlay& play, const Run& run) {
    LiteralPlay literal;
    std::vector<double> passed;
    std::vector<double> shortened;
    std::vector<double> whole;
    for (std::size_t stretch = 0; stretch < stretches; ++stretch) {
        const std::size_t first = (run.size() - stretchFrames) * (stretch + 1) / stretches;
        for (std::size_t i = 0; i < stretchFrames; ++i) {
            const Inspector::Motion& motion = run[first + i].before;
            Inspector::setMotion(Inspector::player(play), motion);
            Inspector::setMotion(literal.runner(), motion);
            const FrameTime time = drawFrame(drawer, play);
            const FrameTime literalTime = drawFrame(drawer, literal);
            if (i == 0) continue; // to warm up
            passed.push_back(time.passed);
            shortened.push_back(time.processor);
            whole.push_back(literalTime.processor);
        }
    }
    std::cout << "A frame of play: " << median(passed) << " ms, " << passed.size() << " frames; "
              << goal << " ms or less on an idle machine" << std::endl;
    return report("  against all drawn: ", median(shortened), median(whole), mostOfLiteral);
}

static bool compareWithVortex(OpenGLDrawer& drawer, GamePlay& play, GamePlay& ending,
                              const Run& run) {
    Inspector::setMotion(Inspector::player(ending), run.back().before);
    if (run.back().action) ending.keyPressed("Action", nullptr);
    drawFrame(drawer, ending);
    if (!Inspector::isFinished(ending)) {
        std::cout << "The play did not end" << std::endl;
        return false;
    }
    for (int i = 1; i < vortexDrawings - vortexFrames; ++i) drawFrame(drawer, ending);
    std::vector<double> plain;
    std::vector<double> closing;
    for (std::size_t i = 0; i < vortexFrames; ++i) {
        Inspector::setMotion(Inspector::player(play),
                             run[(run.size() - 1) * i / vortexFrames].before);
        plain.push_back(drawFrame(drawer, play).processor);
        closing.push_back(drawFrame(drawer, ending).processor);
    }
    return report("  with the vortex, against without: ", median(closing), median(plain),
                  mostOfVortex);
}

int main() {
    noiseSeed() = 1;
    const Run run = GoalRun::find(GoalRun::loadLevel());
    if (run.size() < stretches * stretchFrames) {
        std::cout << "The replay does not reach the goal" << std::endl;
        return 1;
    }
    Application application(Inspector::quietArguments());
    auto& drawer = static_cast<OpenGLDrawer&>(Inspector::drawer(application));
    GamePlay play(application);
    GamePlay ending(application);
    std::cout << std::fixed << std::setprecision(2);
    const bool leavesOut = compareWithLiteral(drawer, play, run);
    const bool closesWell = compareWithVortex(drawer, play, ending, run);
    return leavesOut && closesWell ? 0 : 1;
}
