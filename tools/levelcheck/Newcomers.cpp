// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Newcomers.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <deque>
#include <random>
#include <set>

#include "tools/levelcheck/Findings.h"
#include "tools/levelcheck/Run.h"

static constexpr int playFrames = framesIn(240);
static constexpr int holdFrames = framesIn(30);
static constexpr int soon = 60; // seconds

static constexpr std::uint8_t sign = 0xFE;

// The view, in cells around the runner's.
static constexpr int viewSide = 9;
static constexpr int viewUp = 7;
static constexpr int viewDown = 2;

// What a player is like. These values make 30 of them do on an early version of the level about
// what people did there.
static constexpr int reaction = 12;   // frames
static constexpr int shortestGap = 8; // frames from press to press
static constexpr int longestGap = 11;
static constexpr int thinkFrames = 20;  // from one choice of a target to the next, on average
static constexpr int memorySide = 4;    // cells that are remembered as one spot
static constexpr float novelty = 30;    // what a spot is worth that was never visited
static constexpr float boredom = 100;   // frames in a spot that halve what it is worth after that
static constexpr float signValue = 4;   // of a sign beside a cell
static constexpr float keepOn = 8;      // on the side to which he goes already
static constexpr float farValue = 0.3f; // a column away
static constexpr float climbCost = 1;   // a row up
static constexpr float doubt = 4;       // at random
static constexpr int climbSide = 5;     // columns within which a target above is worth a jump

// Sees, chooses a target and presses keys.
class Newcomer {
public:
    Newcomer(const LevelMap& level, unsigned seed)
        : map(level), generator(seed), player(playStart), plans(reaction) {}

    void step() {
        column = cellOf(player.position().x);
        row = cellOf(player.position().y);
        ++memory[spotOf(column, row)];
        if (--untilThought <= 0) think();
        plans.push_back(plan());
        Input input = plans.front();
        plans.pop_front();
        input.press = --wait <= 0 && input.press;
        if (input.press) wait = shortestGap + random(longestGap - shortestGap + 1);
        const float before = player.position().x;
        ::step(player, input, map);
        speed = std::fabs(player.position().x - before);
    }

    bool hasWon() const { return player.kickSpeed() >= goalSpeed; }
    WorldPoint position() const { return player.position(); }

private:
    using Cell = std::pair<int, int>; // column, row

    int random(int end) { return static_cast<int>(generator() % static_cast<unsigned>(end)); }
    bool isOpen(int x, int y) const { return map.at(x, y) == LevelMap::empty; }
    static Cell spotOf(int x, int y) { return {x / memorySide, y / memorySide}; }
    static std::vector<Cell> neighbours(int x, int y) {
        return {{x + 1, y}, {x - 1, y}, {x, y - 1}, {x, y + 1}};
    }

    // Chooses the open cell that is worth the most, of those in view and connected to his own.
    void think() {
        untilThought = thinkFrames / 2 + random(thinkFrames);
        std::vector<Cell> seen{{column, row}};
        std::set<Cell> known{{column, row}};
        float best = 0;
        for (std::size_t i = 0; i < seen.size(); ++i) {
            const auto [x, y] = seen[i];
            const float value = valueOf(x, y);
            if (i == 0 || value > best) {
                best = value;
                target = seen[i];
            }
            for (const auto& [nextX, nextY] : neighbours(x, y)) {
                const bool visible = std::abs(nextX - column) <= viewSide &&
                                     nextY >= row - viewUp && nextY <= row + viewDown;
                if (visible && isOpen(nextX, nextY) && known.insert({nextX, nextY}).second) {
                    seen.emplace_back(nextX, nextY);
                }
            }
        }
        memory[spotOf(target.first, target.second)] += thinkFrames; // he tires of trying, too
        if (target.first != column) heading = target.first > column ? 1 : -1;
    }

    float valueOf(int x, int y) {
        const int visited = memory[spotOf(x, y)];
        float value =
            visited == 0 ? novelty : novelty / (2 + static_cast<float>(visited) / boredom);
        value += doubt * static_cast<float>(random(100)) / 100;
        value += farValue * static_cast<float>(std::abs(x - column));
        value -= climbCost * static_cast<float>(std::max(0, row - y));
        if ((x - column) * heading > 0) value += keepOn;
        for (const auto& [sideX, sideY] : neighbours(x, y)) {
            if (map.at(sideX, sideY) == sign) value += signValue;
        }
        return value;
    }

    // The keys for his target, as he sees it now. He presses them after his reaction time, so he
    // looks ahead as far as he moves until then.
    Input plan() const {
        const bool climbs = target.second < row - 1 && std::abs(target.first - column) < climbSide;
        const int ahead = std::min(viewSide, 1 + static_cast<int>(speed * reaction));
        bool wall = !isOpen(column - heading, row), gap = false;
        for (int x = column + heading; x != column + heading * (ahead + 1); x += heading) {
            wall = wall || !isOpen(x, row);
            gap = gap || (isOpen(x, row + 1) && isOpen(x, row + 2)) ||
                  map.at(x, row + 1) == LevelMap::flame;
        }
        Input input;
        if (target.first != column) input.direction = heading > 0 ? Input::right : Input::left;
        const bool onGround = !isOpen(column, row + 1);
        input.press = onGround ? wall || climbs || (gap && target.second <= row)
                               : wall && target.second <= row + viewDown;
        return input;
    }

    const LevelMap& map;
    std::mt19937 generator;
    Player player;
    std::map<Cell, int> memory; // frames in each spot
    std::deque<Input> plans;    // for the frames until the reaction time is over
    Cell target;
    float speed = 0; // sideways
    int column = 0, row = 0;
    int heading = 1; // 1 to the right, -1 to the left
    int untilThought = 0;
    int wait = 0; // frames until the next press
};

// The first visit of a region.
struct Visit {
    const Zone* region;
    int frame;
};
using Visits = std::vector<Visit>; // of one player, in their order

// As large as the view, and the players who stayed in it for long.
struct Room {
    WorldPoint middle;
    std::set<unsigned> players;

    bool contains(WorldPoint place) const {
        return std::fabs(middle.x - place.x) <= viewSide && std::fabs(middle.y - place.y) <= viewUp;
    }
};

static void hold(std::vector<Room>& rooms, WorldPoint place, unsigned player) {
    auto room = std::find_if(rooms.begin(), rooms.end(),
                             [&](const Room& known) { return known.contains(place); });
    if (room == rooms.end()) room = rooms.insert(room, {place, {}});
    room->players.insert(player);
}

static Visits play(Newcomer& newcomer, unsigned player, const Zones& zones,
                   std::vector<Room>& rooms) {
    Visits visits;
    Room room{playStart, {}};
    int entered = 0; // frame
    for (int frame = 0; frame < playFrames; ++frame) {
        newcomer.step();
        if (newcomer.hasWon()) break;
        const WorldPoint place = newcomer.position();
        if (!room.contains(place)) {
            room.middle = place;
            entered = frame;
        } else if (frame - entered == holdFrames) {
            hold(rooms, room.middle, player);
        }
        const Zone* region = zones.regionAt(cellOf(place.x), cellOf(place.y));
        const auto isKnown = [&](const Visit& visit) { return visit.region == region; };
        if (!region || std::any_of(visits.begin(), visits.end(), isKnown)) continue;
        visits.push_back({region, frame});
    }
    return visits;
}

// Who came to a region, and how long they needed to one that is later in the zones.
static void printRegion(const Zone& region, const std::vector<Visits>& players,
                        std::ostream& target) {
    int came = 0, inTime = 0;
    std::vector<double> seconds;
    std::map<std::string, int> next; // players by the region that they visited next
    for (const Visits& visits : players) {
        const auto visit = std::find_if(visits.begin(), visits.end(),
                                        [&](const Visit& one) { return one.region == &region; });
        if (visit == visits.end()) continue;
        ++came;
        if (visit->frame < playFrames - framesIn(soon)) ++inTime;
        if (visit + 1 != visits.end()) ++next[visit[1].region->name];
        const auto further = std::find_if(visit, visits.end(), [&](const Visit& later) {
            return later.region > &region; // they lie in the order of their text
        });
        if (further == visits.end()) continue;
        seconds.push_back(secondsOf(static_cast<std::size_t>(further->frame - visit->frame)));
    }
    if (came == 0) return;
    std::sort(seconds.begin(), seconds.end());
    target << "  " << region.name << ": " << came << " came, "
           << std::upper_bound(seconds.begin(), seconds.end(), soon) - seconds.begin()
           << " got further within " << soon << " s (" << inTime << " had the time)";
    if (!seconds.empty()) {
        target << ", median " << decimals(seconds[seconds.size() / 2], 1) << " s, longest "
               << decimals(seconds.back(), 1) << " s";
    }
    for (const auto& [name, count] : next) target << "; " << count << " first to " << name;
    target << "\n";
}

void simulateNewcomers(const LevelMap& map, const Zones& zones, unsigned count,
                       std::ostream& target) {
    std::vector<Visits> players;
    std::vector<Room> rooms;
    unsigned winners = 0;
    for (unsigned player = 1; player <= count; ++player) {
        Newcomer newcomer(map, player);
        players.push_back(play(newcomer, player, zones, rooms));
        winners += newcomer.hasWon() ? 1 : 0;
    }
    target << count << " newcomers, four minutes each: " << winners << " reach the goal.\n";
    for (const Zone& zone : zones.all()) printRegion(zone, players, target);
    for (const auto& [middle, held] : rooms) {
        target << "  held for 30 s near " << zones.describe(cellOf(middle.x), cellOf(middle.y))
               << ": " << held.size() << "\n";
    }
}
