// SPDX-License-Identifier: Zlib
// frame_cost [ARGUMENTS]: measures what a frame of play costs until GL has finished it, along a run
// through the shipped level. Frames of the game take turns with frames that leave nothing out, and
// later with frames under the vortex, so other load on the machine affects both. It compares
// processor time of all threads of the program, including those of software GL. Prints the medians,
// and fails if a frame of the game is too expensive in comparison. Arguments of the game choose the
// window's size.
#include <GL/glew.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include "app/Application.h"
#include "base/Noise.h"
#include "drawing/OpenGLDrawer.h"
#include "screens/GamePlay.h"
#include "tests/support/GoalRun.h"
#include "tests/support/LiteralPlay.h"
#include "tools/Inspector.h"

static constexpr double mostOfLiteral = 0.5; // of a frame with nothing left out
static constexpr double mostOfVortex = 1.6;  // a late frame of the vortex, of one without it
static constexpr double goal = 14;           // ms on an idle machine with two cores; printed only

static constexpr std::size_t segments = 4;       // of the run, spread over it
static constexpr std::size_t segmentFrames = 32; // consecutive frames
static constexpr int vortexFrames = 100;
static constexpr int vortexDrawings = 200; // one more ends the play

using Run = std::vector<GoalRun::Frame>;

struct FrameTime {
    double passed;    // ms until GL had finished it
    double processor; // ms of all threads
};

// Draws a frame like the main loop.
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
    std::cout << what << time << " ms against " << base << " ms of processor time: " << time / base
              << ", at most " << most << (good ? "" : ": TOO MUCH") << std::endl;
    return good;
}

static bool compareWithLiteral(OpenGLDrawer& drawer, GamePlay& play, const Run& run) {
    LiteralPlay literal;
    std::vector<double> passed;
    std::vector<double> shortened;
    std::vector<double> whole;
    for (std::size_t segment = 0; segment < segments; ++segment) {
        const std::size_t first = (run.size() - segmentFrames) * (segment + 1) / segments;
        for (std::size_t i = 0; i < segmentFrames; ++i) {
            const Inspector::Motion& motion = run[first + i].before;
            Inspector::setMotion(Inspector::player(play), motion);
            Inspector::setMotion(literal.runner(), motion);
            const FrameTime time = drawFrame(drawer, play);
            const FrameTime literalTime = drawFrame(drawer, literal);
            if (i == 0) continue; // warm-up
            passed.push_back(time.passed);
            shortened.push_back(time.processor);
            whole.push_back(literalTime.processor);
        }
    }
    std::cout << "A frame of play: " << median(passed) << " ms, " << passed.size() << " frames; "
              << goal << " ms or less on an idle machine" << std::endl;
    return report("  compared with everything drawn: ", median(shortened), median(whole),
                  mostOfLiteral);
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
    return report("  with the vortex, compared with none: ", median(closing), median(plain),
                  mostOfVortex);
}

int main(int argc, char* argv[]) {
    noiseSeed() = 1;
    const Run run = GoalRun::find(GoalRun::loadLevel());
    if (run.size() < segments * segmentFrames) {
        std::cout << "The replay does not reach the goal" << std::endl;
        return 1;
    }
    std::vector<std::string> arguments = Inspector::quietArguments();
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    Application application(arguments);
    auto& drawer = static_cast<OpenGLDrawer&>(Inspector::drawer(application));
    GamePlay play(application);
    GamePlay ending(application);
    std::cout << std::fixed << std::setprecision(2);
    const bool leavesOut = compareWithLiteral(drawer, play, run);
    const bool closesWell = compareWithVortex(drawer, play, ending, run);
    return leavesOut && closesWell ? 0 : 1;
}
