// SPDX-License-Identifier: Zlib
// What the play shows is, to the pixel, what it would show with nothing left out: along the run
// that wins the shipped level, and under the vortex until the screen is closed. The program's
// arguments, such as "-w 800 -h 600 -a 4", choose another window than one of the virtual screen.
#include "app/Application.h"
#include "base/Noise.h"
#include "screens/GamePlay.h"
#include "tests/support/GlWindow.h"
#include "tests/support/LiteralPlay.h"
#include "tools/Inspector.h"

// Both plays in the window of the real application, in step.
class PlayPicture : public testing::Test {
protected:
    PlayPicture() : drawer(static_cast<OpenGLDrawer&>(Inspector::drawer(application))) {
        noiseSeed() = 11;
        play = std::make_unique<GamePlay>(application);
        noiseSeed() = 11;
        literal = std::make_unique<LiteralPlay>();
    }

    void setMotion(const Inspector::Motion& motion) {
        Inspector::setMotion(Inspector::player(*play), motion);
        Inspector::setMotion(literal->runner(), motion);
    }

    template <typename Play>
    Picture drawFrame(Play& drawn) {
        drawer.beginFrame();
        drawn.draw(drawer);
        const SDL_Surface* window = SDL_GetVideoSurface();
        Picture picture = Picture::ofWindow(window->w, window->h);
        drawer.endFrame();
        return picture;
    }

    // Draws the next frame of both and describes the difference; empty if there is none.
    std::string difference() {
        const std::uint32_t before = noiseSeed();
        const Picture shortened = drawFrame(*play);
        noiseSeed() = before;
        return shortened.differenceTo(drawFrame(*literal));
    }

    // Draws the next frame of both on one pixel of the window, to save time.
    void skip() {
        const std::uint32_t before = noiseSeed();
        glViewport(0, 0, 1, 1);
        play->draw(drawer);
        noiseSeed() = before;
        literal->draw(drawer);
        drawer.resetViewport();
    }

    // The last of several sizes counts.
    static std::vector<std::string> windowArguments() {
        std::vector<std::string> all = Inspector::quietArguments();
        const std::vector<std::string> given = testing::internal::GetArgvs();
        all.insert(all.end(), given.begin() + 1, given.end());
        return all;
    }

    Application application = Application(windowArguments());
    OpenGLDrawer& drawer;
    std::unique_ptr<GamePlay> play;
    std::unique_ptr<LiteralPlay> literal;
};

// One test, since the textures of a process belong to one window.
TEST_F(PlayPicture, IsTheWholeOneAlongTheRunAndUnderTheVortex) {
    const LevelMap map = GoalRun::loadLevel();
    const std::vector<GoalRun::Frame> run = GoalRun::find(map);
    ASSERT_GT(run.size(), 600u);
    for (std::size_t i = 0; i < run.size(); i += 67) {
        setMotion(run[i].before);
        ASSERT_EQ(difference(), "") << "frame " << i;
    }

    setMotion(run.back().before);
    literal->held = run.back().held;
    play->keyPressed(run.back().held.left ? "P1Left" : "", nullptr);
    play->keyPressed(run.back().held.right ? "P1Right" : "", nullptr);
    if (run.back().action) {
        play->keyPressed("Action", nullptr);
        literal->runner().requestKick();
    }
    // One drawing more would end the play. Where the runner is no longer matters, so the background
    // may change.
    for (int drawing = 0; drawing < 200; ++drawing) {
        if (drawing % 14 != 0 && drawing < 199) {
            skip();
        } else {
            ASSERT_EQ(difference(), "") << "under the vortex, drawing " << drawing;
        }
        ASSERT_TRUE(Inspector::isFinished(*play));
        setMotion(run[run.size() * static_cast<std::size_t>(drawing) / 200].before);
    }
}
