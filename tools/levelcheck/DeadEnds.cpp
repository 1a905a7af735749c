// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/DeadEnds.h"

// Limits of the searches from floors, one after the other: from most floors a path on is near.
static constexpr std::uint32_t searchStates[] = {10'000, 100'000, 1'000'000};

static constexpr std::uint32_t trapStates = 100'000; // of a search from one state
static constexpr int mostTrapSearches = 1000;

DeadEnds::DeadEnds(const LevelMap& level, const Search& wholeSearch)
    : map(level), whole(wholeSearch), states(wholeSearch.getStates()),
      free(std::size_t{level.getWidth()} * level.getHeight()) {
    findStands();
    checkFloors();
    const std::vector<bool> escapes = findEscapes();
    findTraps(escapes, true);
    if (traps.isEmpty()) findTraps(escapes, false);
}

// Floors near the start lead on.
void DeadEnds::findStands() {
    std::vector<bool> known(free.size());
    for (std::uint32_t i = 0; i < states.size(); ++i) {
        if (!states[i].isStanding(map)) continue;
        const std::size_t floor = floorAt(states[i]);
        if (!known[floor]) stands.push_back(i);
        known[floor] = true;
        if (states[i].isNearStart()) free[floor] = true;
    }
}

// The leftmost cell of the floor on which a state is standing.
std::size_t DeadEnds::floorAt(const RunnerState& state) const {
    int column = state.column();
    while (RunnerState::isFloor(map, column - 1, state.row())) --column;
    return cellIndex(map, column, state.row());
}

bool DeadEnds::leadsOn(std::uint32_t from, std::uint32_t mostStates) const {
    bool found = false;
    Search search(map, states[from], mostStates);
    search.run([&](const Search::Goal&) { found = true; },
               [&](std::uint32_t index) {
                   const RunnerState& state = search.getStates()[index];
                   return found = found || state.isNearStart() ||
                                  (state.isStanding(map) && free[floorAt(state)]);
               });
    return found;
}

// A floor that leads on helps the others. Those found last come first, since goals are there.
void DeadEnds::checkFloors() {
    for (const std::uint32_t limit : searchStates) {
        for (bool changed = true; changed;) {
            changed = false;
            for (auto stand = stands.rbegin(); stand != stands.rend(); ++stand) {
                const std::size_t floor = floorAt(states[*stand]);
                if (free[floor] || !leadsOn(*stand, limit)) continue;
                free[floor] = changed = true;
            }
        }
    }
    for (const std::uint32_t stand : stands) {
        const RunnerState& state = states[stand];
        if (!free[floorAt(state)]) deadFloors.add(state.column(), state.row());
    }
}

// The states with a path on, by edges and parents, going over all until nothing changes.
std::vector<bool> DeadEnds::findEscapes() const {
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
            for (int k = states[i].edges; k-- > 0;) {
                if (escapes[edges[--edge]]) mark(i);
            }
        }
    }
    return escapes;
}

// A state of the whole search represents all with its key, so one that seems to have no path on may
// have one with its own exact numbers: that is searched for.
void DeadEnds::findTraps(const std::vector<bool>& escapes, bool resting) {
    int searches = 0;
    for (std::uint32_t i = 0; i < states.size(); ++i) {
        if (escapes[i] || states[i].resting != resting) continue;
        const int column = states[i].column(), row = states[i].row();
        const bool known = traps.hasNear(column, row);
        if (!known && ++searches <= mostTrapSearches && leadsOn(i, trapStates)) continue;
        traps.add(column, row);
        if (known) continue;
        std::uint32_t entrance = i;
        while (entrance != 0 && !escapes[entrance]) entrance = states[entrance].parent;
        entrances.push_back(states[entrance]);
    }
}
