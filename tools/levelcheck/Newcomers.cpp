// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Newcomers.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <set>
#include <utility>

#include "tools/levelcheck/Findings.h"
#include "tools/levelcheck/Run.h"

static constexpr int playFrames = framesIn(240);
static constexpr int soon = 60;                              // seconds
static constexpr int viewSide = 9, viewUp = 7, viewDown = 2; // cells around the runner's
static constexpr std::uint8_t sign = 0xFE;

// What a player is like. These values make 30 of them do on an early version of the level about
// what people did there. What a cell is worth counts in rows that he would climb for it.
static constexpr int reaction = 12;                // frames
static constexpr int pressGaps[] = {8, 9, 10, 11}; // frames from press to press
static constexpr int thinkFrames = 20;  // from one choice of a target to the next, on average
static constexpr int memorySide = 4;    // cells that are remembered as one spot
static constexpr float novelty = 30;    // what a spot is worth that was never visited
static constexpr float boredom = 100;   // frames in a spot that halve what it is worth after that
static constexpr float signValue = 4;   // of a sign beside a cell
static constexpr float keepOn = 8;      // on the side to which he goes already
static constexpr float farValue = 0.3f; // a column away
static constexpr float doubt = 4;       // at random
static constexpr int climbSide = 5;     // columns within which a target above is worth a jump

static bool isInView(WorldPoint middle, WorldPoint place) {
    return std::fabs(middle.x - place.x) <= viewSide && std::fabs(middle.y - place.y) <= viewUp;
}

// Sees, chooses a target and presses keys.
struct Newcomer {
    const LevelMap& map;
    std::mt19937 generator;
    Player player{playStart};
    int column = 0, row = 0;
    std::map<std::pair<int, int>, int> memory = {}; // frames in each spot
    std::pair<int, int> target = {};                // column and row
    int heading = 1;                                // 1 to the right, -1 to the left
    int untilThought = 0;
    Inputs plans = Inputs(reaction); // the last ones
    float speed = 0;                 // sideways
    int wait = 0;                    // frames until the next press

    void step(std::size_t frame) {
        const WorldPoint before = player.position();
        column = cellOf(before.x);
        row = cellOf(before.y);
        ++memoryOf(column, row);
        if (--untilThought <= 0) think();
        Input input = std::exchange(plans[frame % reaction], plan());
        input.press = --wait <= 0 && input.press;
        if (input.press) wait = pressGaps[random(std::size(pressGaps))];
        ::step(player, input, map);
        speed = std::fabs(player.position().x - before.x);
    }

    int random(unsigned end) { return static_cast<int>(generator() % end); }
    bool isOpen(int x, int y) const { return map.at(x, y) == LevelMap::empty; }
    int& memoryOf(int x, int y) { return memory[{x / memorySide, y / memorySide}]; }

    // Chooses the open cell that is worth the most, of those in view and connected to his own.
    void think() {
        untilThought = thinkFrames / 2 + random(thinkFrames);
        std::vector<std::pair<int, int>> seen{{column, row}};
        std::set<std::pair<int, int>> known{{column, row}};
        std::vector<float> values; // of the seen cells
        for (std::size_t i = 0; i < seen.size(); ++i) {
            const auto [x, y] = seen[i];
            const auto visited = static_cast<float>(memoryOf(x, y)); // frames
            float value = visited == 0 ? novelty : novelty / (2 + visited / boredom);
            value += doubt * static_cast<float>(random(100)) / 100;
            value += farValue * static_cast<float>(std::abs(x - column));
            value -= static_cast<float>(std::max(0, row - y));
            if ((x - column) * heading > 0) value += keepOn;
            for (const auto& [nextX, nextY] :
                 {std::pair(x + 1, y), {x - 1, y}, {x, y - 1}, {x, y + 1}}) {
                if (map.at(nextX, nextY) == sign) value += signValue;
                const bool visible = std::abs(nextX - column) <= viewSide &&
                                     nextY >= row - viewUp && nextY <= row + viewDown;
                if (visible && isOpen(nextX, nextY) && known.insert({nextX, nextY}).second) {
                    seen.emplace_back(nextX, nextY);
                }
            }
            values.push_back(value);
        }
        const auto best = std::max_element(values.begin(), values.end()) - values.begin();
        target = seen[static_cast<std::size_t>(best)];
        memoryOf(target.first, target.second) += thinkFrames; // he tires of trying, too
        if (target.first != column) heading = target.first > column ? 1 : -1;
    }

    // The keys for his target, as he sees it now. He presses them after his reaction time, so he
    // looks ahead as far as he moves until then.
    Input plan() const {
        const auto [targetX, targetY] = target;
        const int ahead = std::min(viewSide, 1 + static_cast<int>(speed * reaction));
        bool wall = !isOpen(column - heading, row), gap = false;
        for (int x = column + heading; x != column + heading * (ahead + 1); x += heading) {
            wall = wall || !isOpen(x, row);
            gap = gap || (isOpen(x, row + 1) && isOpen(x, row + 2)) ||
                  map.at(x, row + 1) == LevelMap::flame;
        }
        const bool climbs = targetY < row - 1 && std::abs(targetX - column) < climbSide;
        Input input;
        if (targetX != column) input.direction = heading > 0 ? Input::right : Input::left;
        const bool inAir = isOpen(column, row + 1);
        input.press =
            inAir ? wall && targetY <= row + viewDown : wall || climbs || (gap && targetY <= row);
        return input;
    }
};

// What players did after their first visit of a region.
struct Visits {
    int players = 0;
    int inTime = 0;                   // players with a minute left to play
    std::multiset<std::size_t> times; // frames until a region that is later in the zones
    std::map<std::string, int> next;  // players by the region that they visited next
};

// Whether he reaches the goal. Adds the middle of the view when he has stayed in it for 30 s.
static bool play(Newcomer newcomer, const Zones& zones, std::map<const Zone*, Visits>& regions,
                 std::vector<WorldPoint>& held) {
    std::map<const Zone*, std::size_t> waiting; // frame of the visit, until he gets further
    std::set<const Zone*> visited;
    Visits* last = nullptr;
    WorldPoint middle = playStart;
    std::size_t entered = 0; // frame in which the runner came into view of the middle
    for (std::size_t frame = 0; frame < playFrames; ++frame) {
        newcomer.step(frame);
        if (newcomer.player.kickSpeed() >= goalSpeed) return true;
        const WorldPoint place = newcomer.player.position();
        if (!isInView(middle, place)) {
            middle = place;
            entered = frame;
        }
        if (frame - entered == framesIn(30)) held.push_back(middle);
        const Zone* region = zones.regionAt(cellOf(place.x), cellOf(place.y));
        if (!region || !visited.insert(region).second) continue;
        if (last) ++last->next[region->name];
        last = &regions[region];
        ++last->players;
        if (frame < playFrames - framesIn(soon)) ++last->inTime;
        waiting[region] = frame;
        for (; waiting.begin()->first < region; waiting.erase(waiting.begin())) {
            const auto& [earlier, since] = *waiting.begin();
            regions[earlier].times.insert(frame - since);
        }
    }
    return false;
}

void simulateNewcomers(const LevelMap& map, const Zones& zones, unsigned count,
                       std::ostream& target) {
    std::map<const Zone*, Visits> regions; // in the order of the zones
    std::vector<WorldPoint> held;
    int winners = 0;
    for (unsigned seed = 1; seed <= count; ++seed) {
        if (play({map, std::mt19937(seed)}, zones, regions, held)) ++winners;
    }
    target << count << " newcomers, four minutes each: " << winners << " reach the goal.\n";
    for (const auto& [region, visits] : regions) {
        target << "  " << region->name << ": " << visits.players << " came, "
               << std::distance(visits.times.begin(), visits.times.upper_bound(framesIn(soon)))
               << " got further within " << soon << " s (" << visits.inTime << " had the time)";
        if (!visits.times.empty()) {
            const std::size_t median = *std::next(visits.times.begin(), visits.times.size() / 2);
            target << ", median " << decimals(secondsOf(median), 1) << " s, longest "
                   << decimals(secondsOf(*visits.times.rbegin()), 1) << " s";
        }
        for (const auto& [name, players] : visits.next) {
            target << "; " << players << " first to " << name;
        }
        target << "\n";
    }
    while (!held.empty()) {
        const WorldPoint middle = held.front();
        const auto isNear = [&](WorldPoint place) { return isInView(middle, place); };
        target << "  held for 30 s near " << zones.describe(cellOf(middle.x), cellOf(middle.y))
               << ": " << std::erase_if(held, isNear) << "\n";
    }
}
