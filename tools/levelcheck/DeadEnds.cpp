// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/DeadEnds.h"

#include <algorithm>
#include <map>
#include <set>

// Limits of the searches from floors, one after the other: few need the second.
static constexpr std::uint32_t floorStates[] = {100'000, 1'000'000};

static constexpr std::uint32_t trapStates = 100'000; // of a search from one state
static constexpr int mostTrapSearches = 1000;

// A floor is as long as the runner can walk on it, and is known by its leftmost cell. A path on is
// one to a goal or to the start.
class DeadEnds {
public:
    struct Trap {
        RunnerState inside;
        RunnerState entrance; // the last state on the path there that still had a way back
    };

    DeadEnds(const LevelMap& level, const Search& wholeSearch)
        : map(level), whole(wholeSearch), states(wholeSearch.getStates()),
          free(std::size_t{level.getWidth()} * level.getHeight()) {}

    // Floors from which no path on was found. Those found last are searched from first, since goals
    // are there.
    Places findDeadFloors() {
        findFloors();
        std::map<std::size_t, Floors> reached; // from each floor that is not free yet
        for (const std::uint32_t limit : floorStates) {
            for (auto stand = stands.rbegin(); stand != stands.rend(); ++stand) {
                const std::size_t floor = floorAt(states[*stand]);
                if (free[floor] || !leadsOn(*stand, limit, reached[floor])) continue;
                free[floor] = true;
                freeBy(reached);
            }
        }
        Places dead;
        for (const std::uint32_t stand : stands) {
            const RunnerState& state = states[stand];
            if (!free[floorAt(state)]) dead.add(state.column(), state.row());
        }
        return dead;
    }

    std::size_t floorCount() const { return stands.size(); }

    // Where the runner comes to rest with no path on; where it has none if it never rests. A state
    // of the whole search represents all with its key, so one that seems to have no path on may
    // have one with its own exact numbers: that is searched for.
    std::vector<Trap> findTraps() const {
        const std::vector<bool> escapes = findEscapes();
        std::vector<Trap> traps;
        Places places;
        Floors reached;
        for (const bool resting : {true, false}) {
            int searches = 0;
            for (std::uint32_t i = 0; i < states.size(); ++i) {
                if (escapes[i] || states[i].resting != resting) continue;
                const int column = states[i].column(), row = states[i].row();
                if (places.hasNear(column, row)) continue;
                if (++searches <= mostTrapSearches && leadsOn(i, trapStates, reached)) continue;
                places.add(column, row);
                std::uint32_t entrance = i;
                while (entrance != 0 && !escapes[entrance]) entrance = states[entrance].parent;
                traps.push_back({states[i], states[entrance]});
            }
            if (!traps.empty()) break;
        }
        return traps;
    }

private:
    using Floors = std::set<std::size_t>;

    // Those near the start are free.
    void findFloors() {
        std::vector<bool> known(free.size());
        for (std::uint32_t i = 0; i < states.size(); ++i) {
            if (!states[i].isStanding(map)) continue;
            const std::size_t floor = floorAt(states[i]);
            if (!known[floor]) stands.push_back(i);
            known[floor] = true;
            if (states[i].isNearStart()) free[floor] = true;
        }
    }

    std::size_t floorAt(const RunnerState& state) const {
        int column = state.column();
        while (RunnerState::isFloor(map, column - 1, state.row())) --column;
        return cellIndex(map, column, state.row());
    }

    // Whether a search from a state finds a path on. Adds the floors that it reached.
    bool leadsOn(std::uint32_t from, std::uint32_t mostStates, Floors& reached) const {
        bool found = false;
        Search search(map, states[from], {}, mostStates);
        search.run([&](const Search::Goal&) { found = true; },
                   [&](std::uint32_t index) {
                       const RunnerState& state = search.getStates()[index];
                       if (state.isNearStart()) return found = true;
                       if (!state.isStanding(map)) return found;
                       const std::size_t floor = floorAt(state);
                       reached.insert(floor);
                       return found = found || free[floor];
                   });
        return found;
    }

    // Frees all floors from which a free one was reached.
    void freeBy(const std::map<std::size_t, Floors>& reached) {
        for (bool changed = true; changed;) {
            changed = false;
            for (const auto& [floor, others] : reached) {
                const auto isFree = [&](std::size_t other) { return bool{free[other]}; };
                if (free[floor] || std::none_of(others.begin(), others.end(), isFree)) continue;
                free[floor] = changed = true;
            }
        }
    }

    // The states with a path on, by edges and parents, going over all until nothing changes.
    std::vector<bool> findEscapes() const {
        std::vector<bool> escapes(states.size());
        bool changed = true;
        const auto mark = [&](std::uint32_t state) { // and the states before it
            for (; !escapes[state]; state = states[state].parent) escapes[state] = changed = true;
        };
        for (std::uint32_t i = 0; i < states.size(); ++i) {
            if (states[i].winning || states[i].isNearStart()) mark(i);
        }
        const auto& edges = whole.getEdges();
        while (changed) {
            changed = false;
            std::size_t edge = edges.size();
            for (std::uint32_t i = states.size(); i-- > 0;) {
                const std::size_t end = edge;
                edge -= states[i].edges;
                for (std::size_t k = edge; k < end && !escapes[i]; ++k) {
                    if (escapes[edges[k]]) mark(i);
                }
            }
        }
        return escapes;
    }

    const LevelMap& map;
    const Search& whole;
    const StateSet& states;            // of the whole search
    std::vector<std::uint32_t> stands; // the first state on each floor where one stood
    std::vector<bool> free;            // by cell: whether the floor leads on
};

void checkDeadEnds(const LevelMap& map, const Search& whole, const Zones& zones,
                   Findings& findings) {
    DeadEnds ends(map, whole);
    const Places floors = ends.findDeadFloors();
    const std::vector<DeadEnds::Trap> traps = ends.findTraps();
    for (const auto& [inside, entrance] : traps) {
        findings.addError(
            "the runner can get stuck near " + zones.describe(inside.column(), inside.row()) +
            "; the path there begins in " + placeText(entrance.column(), entrance.row()));
    }
    findings.addPlaces(Findings::error, floors,
                       "no path to a goal or to the start was found from floors near ");
    if (traps.empty() && floors.all().empty()) {
        findings.add(Findings::good, "every state, and every one of " +
                                         std::to_string(ends.floorCount()) +
                                         " floors, leads on to a goal or back to the start");
    }
}
