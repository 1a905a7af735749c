// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/GoalPlaces.h"

#include <algorithm>
#include <tuple>

static constexpr int patience = 32; // frames in which a late press may still reach the goal

static bool isFaster(const GoalPlaces::Way& one, const GoalPlaces::Way& other) {
    return std::tie(one.frames, one.changes) < std::tie(other.frames, other.changes);
}

void GoalPlaces::goalReached(const Search& search, std::uint32_t state, Stretch stretch, int frame,
                             WorldPoint place) {
    const int column = cellOf(place.x), row = cellOf(place.y);
    const std::size_t frames = search.framesBehind() + static_cast<std::size_t>(frame) + 1;
    const Way way{state, stretch, frame, column, row, frames, search.getStates()[state].changes};
    const Zone* goal = zones.goalAt(column, row);
    if (goal || zones.isEmpty()) {
        const std::string name = goal ? goal->name : "";
        const auto known = ways.find(name);
        if (known != ways.end() && !isFaster(way, known->second)) return;
        if (!isLuck(search, way)) ways[name] = way;
        return;
    }
    const Cell cell{row, column};
    if (outside.count(cell) > 0) return;
    if (isLuck(search, way)) {
        lucky.insert(cell);
    } else {
        outside[cell] = way;
    }
}

bool GoalPlaces::arrived(const Search& search, std::uint32_t /*state*/) {
    if (!stopping) return false;
    const Way* way = fastest(wanted);
    return way && search.framesBehind() >= way->frames;
}

const GoalPlaces::Way* GoalPlaces::fastest(const std::string& name) const {
    const Way* best = nullptr;
    for (const auto& [zone, way] : ways) {
        if (!name.empty() && zone != name) continue;
        if (!best || isFaster(way, *best)) best = &way;
    }
    return best;
}

Places GoalPlaces::getLucky() const {
    Places places;
    for (const Cell& cell : lucky) {
        if (outside.count(cell) == 0) places.add(cell.second, cell.first);
    }
    return places;
}

// Goes back to the last press, and one stretch further.
bool GoalPlaces::isLuck(const Search& search, const Way& way) const {
    const StateSet& states = search.getStates();
    Inputs backward(patience, Input{way.stretch.direction});
    for (int i = way.frame; i >= 0; --i) {
        backward.push_back({way.stretch.direction, way.stretch.press == i});
    }
    std::uint32_t state = way.state;
    bool pressed = way.stretch.press != Stretch::noPress;
    for (bool enough = false; !enough && state != 0; state = states[state].parent) {
        enough = pressed;
        for (int i = Stretch::frames; i-- > 0;) {
            backward.push_back({states[state].direction, states[state].press == i});
        }
        pressed = pressed || states[state].press != Stretch::noPress;
    }
    Inputs inputs(backward.rbegin(), backward.rend());
    const auto last = std::find_if(inputs.rbegin(), inputs.rend(),
                                   [](const Input& input) { return input.press; });
    if (last == inputs.rend()) return false;
    const auto press = static_cast<std::size_t>(inputs.rend() - last) - 1;
    const auto reaches = [&](std::size_t moved) {
        Inputs tried = inputs;
        tried[press].press = false;
        tried[moved].press = true;
        Player player = states[state].player();
        for (const Input input : tried) {
            step(player, input, map);
            if (player.kickSpeed() >= goalSpeed) return true;
        }
        return false;
    };
    return !(press > 0 && reaches(press - 1)) && !reaches(press + 1);
}
