// SPDX-License-Identifier: Zlib
#include "tools/replay/Ghosts.h"

#include <GL/glew.h>

#include <cmath>
#include <filesystem>
#include <stdexcept>

#include "drawing/Drawer.h"
#include "tools/replay/RunLevel.h"
#include "tools/replay/RunLink.h"

static constexpr float paleness = 0.4f; // opacity of a ghost
static constexpr float nameOpacity = 0.75f;
static constexpr float nameX = 592; // units, when the ghost is where the runner is
static constexpr float nameY = 450;
static constexpr float nameHeight = 22; // units; names are above each other, so all can be read
static constexpr float nameSize = 24;   // pixels
static constexpr std::size_t longestName = 20; // letters
static constexpr float farthestX = 12;         // tiles; farther ghosts are beyond the screen
static constexpr float farthestY = 9;          // tiles
static constexpr int shownSpinFrames = 100;    // from a ghost's goal on

// The name of the player, or else of the file, in ASCII, since the game's font has nothing else.
static std::string shownName(const InputScript& script, const std::string& file) {
    std::string name = script.getHeader().player;
    if (name.empty()) name = std::filesystem::path(RunLink::nameOf(file)).stem();
    std::string shown;
    for (const char letter : name.substr(0, longestName)) {
        shown += letter >= ' ' && letter <= '~' ? letter : '?';
    }
    return shown;
}

Ghosts::Ghost::Ghost(const std::string& file, const RunLevel& level)
    : script(RunLink::read(file)), run(script, level.getMap()), name(shownName(script, file)) {
    const std::string refusal = level.refusal(script.getHeader());
    if (!refusal.empty())
        throw std::runtime_error(RunLink::nameOf(file) + " does not fit this level: " + refusal);
    while (run.getPlayFrames() == 0 && run.step()) {}
    if (run.getPlayFrames() == 0)
        throw std::runtime_error(RunLink::nameOf(file) + " ends before the play");
}

void Ghosts::add(const std::string& file, const RunLevel& level) {
    ghosts.push_back(std::make_unique<Ghost>(file, level));
}

void Ghosts::draw(Drawer& drawer, const Player& runner) {
    if (font == 0) font = drawer.createFont("MarsNeedsCunnilingus.ttf", nameSize);
    const WorldPoint centre = runner.position();
    float nameTop = nameY;
    for (const auto& ghost : ghosts) {
        const WorldPoint place = ghost->run.getPlayer().position();
        const float x = place.x - centre.x;
        const float y = place.y - centre.y;
        if (std::fabs(x) < farthestX && std::fabs(y) < farthestY) {
            drawer.translate(x * tileUnits, y * tileUnits);
            draw(*ghost, drawer, font, nameTop);
            drawer.translate(-x * tileUnits, -y * tileUnits);
        }
        nameTop -= nameHeight;
        ghost->run.step(); // to the play's next frame
    }
}

// The sprite's pixels are opaque or empty: the alpha test drops the empty ones, and the blending
// makes the others pale.
void Ghosts::draw(Ghost& ghost, Drawer& drawer, std::int32_t font, float nameTop) {
    if (ghost.run.reachesGoal() && ++ghost.spinFrames > shownSpinFrames) return;
    glPushAttrib(GL_COLOR_BUFFER_BIT);
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_GREATER, 0.5f);
    glBlendColor(0, 0, 0, paleness);
    glBlendFunc(GL_CONSTANT_ALPHA, GL_ONE_MINUS_CONSTANT_ALPHA);
    ghost.run.getPlayer().draw(drawer);
    glPopAttrib();
    // White with a shadow can be read on bright sky and on dark rock.
    drawer.drawText(ghost.name, font, nameX + 2, nameTop + 2, 400, 1, 0, 0, 0, nameOpacity);
    drawer.drawText(ghost.name, font, nameX, nameTop, 400, 1, 1, 1, 1, nameOpacity);
}
