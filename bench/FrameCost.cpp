// SPDX-License-Identifier: Zlib
// frame_cost [ARGUMENTS]: measures what a frame of play costs until GL has finished it, along a run
// through the shipped level, and what one costs under the vortex. They take turns with frames that
// only blend gradients over the screen, and those of the title and the epilogue with frames of
// play, so other load on the machine affects both. It compares processor time of all threads of the
// program, including those of software GL. Prints the medians, and fails if a frame of the game is
// too expensive in comparison. Arguments of the game choose the window's size.
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
#include "screens/Epilogue.h"
#include "screens/GamePlay.h"
#include "screens/TitleScreen.h"
#include "tests/support/GoalRun.h"
#include "tools/Inspector.h"

static constexpr double mostOfGradients = 0.4; // of a frame of so many gradients:
static constexpr int gradients = 9;
static constexpr double mostOfVortex = 0.6; // a late frame of the vortex, of the same gradients
static constexpr double mostOfPlay = 1.2;   // a frame of the other screens, of one of the play
static constexpr double goal = 14;          // ms on an idle machine with two cores; printed only

static constexpr std::size_t segments = 4;       // of the run, spread over it
static constexpr std::size_t segmentFrames = 32; // consecutive frames
static constexpr int vortexFrames = 100;
static constexpr int vortexDrawings = 200; // one more ends the play
static constexpr int turns = 10;           // of play and another screen
static constexpr int turnFrames = 10;
static constexpr int titlePages = 5;       // to the last, which shows the most
static constexpr int epilogueFrames = 500; // until all its texts are shown

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

struct Gradients {
    void draw(OpenGLDrawer& drawer) {
        for (int i = 0; i < gradients; ++i) {
            drawer.fillGradient(0, 0, 1280, 720, 112, 96, 128, 128, 255, 255, 255, 128);
        }
    }
};

static bool compareWithGradients(OpenGLDrawer& drawer, GamePlay& play, const Run& run) {
    Gradients gradientsOnly;
    std::vector<double> passed;
    std::vector<double> played;
    std::vector<double> yardsticks;
    for (std::size_t segment = 0; segment < segments; ++segment) {
        const std::size_t first = (run.size() - segmentFrames) * (segment + 1) / segments;
        for (std::size_t i = 0; i < segmentFrames; ++i) {
            Inspector::setMotion(Inspector::player(play), run[first + i].before);
            const FrameTime time = drawFrame(drawer, play);
            const FrameTime yardstick = drawFrame(drawer, gradientsOnly);
            if (i == 0) continue; // warm-up
            passed.push_back(time.passed);
            played.push_back(time.processor);
            yardsticks.push_back(yardstick.processor);
        }
    }
    std::cout << "A frame of play: " << median(passed) << " ms, " << passed.size() << " frames; "
              << goal << " ms or less on an idle machine" << std::endl;
    return report("  compared with gradients: ", median(played), median(yardsticks),
                  mostOfGradients);
}

static bool compareVortexWithGradients(OpenGLDrawer& drawer, GamePlay& ending, const Run& run) {
    Inspector::setMotion(Inspector::player(ending), run.back().before);
    if (run.back().action) ending.keyPressed("Action", nullptr);
    drawFrame(drawer, ending);
    if (!Inspector::isFinished(ending)) {
        std::cout << "The play did not end" << std::endl;
        return false;
    }
    for (int i = 1; i < vortexDrawings - vortexFrames; ++i) drawFrame(drawer, ending);
    Gradients gradientsOnly;
    std::vector<double> yardsticks;
    std::vector<double> closing;
    for (std::size_t i = 0; i < vortexFrames; ++i) {
        yardsticks.push_back(drawFrame(drawer, gradientsOnly).processor);
        closing.push_back(drawFrame(drawer, ending).processor);
    }
    return report("  the vortex, compared with gradients: ", median(closing), median(yardsticks),
                  mostOfVortex);
}

// Screens take turns of several frames, since a change of the backdrop is expensive.
template <typename Screen>
static bool compareWithPlay(const char* what, OpenGLDrawer& drawer, GamePlay& play, Screen& screen,
                            const Run& run) {
    std::vector<double> played;
    std::vector<double> others;
    for (std::size_t turn = 0; turn < turns; ++turn) {
        Inspector::setMotion(Inspector::player(play), run[(run.size() - 1) * turn / turns].before);
        drawFrame(drawer, play);
        for (int i = 0; i < turnFrames; ++i) played.push_back(drawFrame(drawer, play).processor);
        drawFrame(drawer, screen);
        for (int i = 0; i < turnFrames; ++i) others.push_back(drawFrame(drawer, screen).processor);
    }
    return report(what, median(others), median(played), mostOfPlay);
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
    const bool isFast = compareWithGradients(drawer, play, run);
    const bool closesWell = compareVortexWithGradients(drawer, ending, run);
    TitleScreen title(application);
    for (int page = 0; page < titlePages; ++page) title.keyPressed("Action", nullptr);
    const bool beginsWell =
        compareWithPlay("  the title, compared with the play: ", drawer, play, title, run);
    Epilogue epilogue(application);
    for (int i = 0; i < epilogueFrames; ++i) drawFrame(drawer, epilogue);
    const bool endsWell =
        compareWithPlay("  the epilogue, compared with the play: ", drawer, play, epilogue, run);
    return isFast && closesWell && beginsWell && endsWell ? 0 : 1;
}
