// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/RunnerState.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

static constexpr float fineSpeed = 0.01f; // tiles per frame; all steps are made of these
static constexpr int fineSteps = 400;     // to each side of 0
static constexpr int waitStep = 4;        // frames
static constexpr int startColumns = 2;    // the start's neighbourhood, to each side
static constexpr int startRows = 8;

using StepTable = std::array<std::uint8_t, 2 * fineSteps>;

// Hundredths of a tile per frame that make a step, where the speed has so many.
static constexpr int sidewaysWidth(int speed) {
    return std::abs(speed) < 24 ? 4 : 10;
}

static constexpr int verticalWidth(int speed) {
    if (speed < -100) return 10;
    return speed < 28 ? 4 : 12;
}

template <typename Width>
static StepTable makeTable(Width width) {
    StepTable table{};
    int step = 0;
    for (int i = 0, used = 0; i < 2 * fineSteps; ++i) {
        if (++used > width(i - fineSteps)) {
            ++step;
            used = 1;
        }
        table[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(step);
    }
    return table;
}

static std::uint64_t stepOf(const StepTable& table, float speed) {
    const float fine = std::floor(speed / fineSpeed + 0.5f);
    const float index = std::clamp<float>(fine + fineSteps, 0, 2 * fineSteps - 1);
    return table[static_cast<std::size_t>(index)];
}

RunnerState RunnerState::of(const Player& player) {
    const Inspector::Motion motion = Inspector::motion(player);
    RunnerState state;
    state.x = motion.x;
    state.y = motion.y;
    state.vx = motion.vx;
    state.vy = motion.vy;
    state.kicking = motion.kicking;
    return state;
}

Player RunnerState::player() const {
    Player player({x, y});
    Inspector::setMotion(player, {x, y, vx, vy, kicking, true, true});
    return player;
}

bool RunnerState::isNearStart() const {
    return std::abs(column() - cellOf(Run::start.x)) <= startColumns &&
           std::abs(row() - cellOf(Run::start.y)) <= startRows;
}

std::uint64_t RunnerState::key() const {
    static const StepTable sideways = makeTable(sidewaysWidth);
    static const StepTable vertical = makeTable(verticalWidth);
    const auto waitSteps = static_cast<std::uint64_t>((wait + waitStep - 1) / waitStep);
    return static_cast<std::uint64_t>(column()) | static_cast<std::uint64_t>(row()) << 16 |
           stepOf(sideways, vx) << 32 | stepOf(vertical, vy) << 40 | waitSteps << 48 |
           static_cast<std::uint64_t>(kicking) << 50;
}

const char* RunnerState::resolution() {
    return "a cell; 0.04 to 0.1 of speed sideways, 0.04 to 0.12 up and down; kick or not; 4 frames "
           "of wait";
}
