// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Search.h"

#include <algorithm>

static constexpr std::uint16_t mostChanges = 0xFFFF;

static RunnerState stateBehind(const LevelMap& map, const Inputs& inputs) {
    Player player(Run::start);
    int wait = 0;
    for (const Input input : inputs) {
        step(player, input, map);
        wait = std::max(0, (input.press ? pressGap : wait) - 1);
    }
    RunnerState state = RunnerState::of(player);
    state.wait = wait & 0xF;
    if (!inputs.empty()) state.direction = inputs.back().direction;
    return state;
}

Search::Search(const LevelMap& level, const Inputs& before, std::uint32_t mostStates)
    : Search(level, stateBehind(level, before), mostStates) {
    inputsBefore = before;
}

Search::Search(const LevelMap& level, const RunnerState& first, std::uint32_t mostStates)
    : map(level), limit(std::min(mostStates, StateSet::mostStates)),
      passed(std::size_t{level.getWidth()} * level.getHeight()) {
    states.findOrAdd(first);
    states[0].parent = 0;
    states[0].edges = 0;
}

Search::End Search::run(Listener& listener) {
    for (std::uint32_t index = 0; index < states.size(); ++index) {
        if (index == layerEnd) {
            layerEnd = states.size();
            ++depth;
        }
        expand(index, listener);
        if (found) return End::found;
        if (states.size() >= limit) return End::full;
    }
    return End::exhausted;
}

void Search::expand(std::uint32_t index, Listener& listener) {
    const RunnerState from = states[index];
    constexpr Input::Direction all[] = {Input::none, Input::left, Input::right};
    for (int turn = 0; turn < 3; ++turn) {
        // First what the hand does already.
        const Input::Direction direction = all[(from.direction + turn) % 3];
        Player player = from.player();
        Stretch stretch{direction, Stretch::noPress};
        bool alive = true;
        for (int frame = 0; alive && frame < Stretch::frames; ++frame) {
            if (frame >= from.wait && pressMatters(player.position())) {
                follow(player, index, {direction, static_cast<std::uint8_t>(frame)}, frame,
                       listener);
            }
            alive = step(player, index, stretch, frame, listener);
        }
        if (alive) arrive(player, index, stretch, listener);
    }
}

// The rest of a stretch, with the press in its first frame.
void Search::follow(Player player, std::uint32_t index, Stretch stretch, int frame,
                    Listener& listener) {
    player.requestKick();
    for (; frame < Stretch::frames; ++frame) {
        if (!step(player, index, stretch, frame, listener)) return;
    }
    arrive(player, index, stretch, listener);
}

// False where the play ends, or the checks do.
bool Search::step(Player& player, std::uint32_t index, Stretch stretch, int frame,
                  Listener& listener) {
    player.update(Input{stretch.direction}.held(), map);
    const WorldPoint place = player.position();
    const int column = cellOf(place.x), row = cellOf(place.y);
    if (!map.contains(column, row)) {
        outsidePassed = true;
        return false;
    }
    passed[static_cast<std::size_t>(row) * map.getWidth() + static_cast<std::size_t>(column)] = 1;
    if (player.kickSpeed() < goalSpeed) return true;
    states[index].winning = true;
    listener.goalReached(*this, index, stretch, frame, place);
    return false;
}

void Search::arrive(const Player& player, std::uint32_t index, Stretch stretch,
                    Listener& listener) {
    const RunnerState& from = states[index];
    RunnerState state = RunnerState::of(player);
    state.parent = index;
    state.direction = stretch.direction;
    state.press = stretch.press & 7;
    const bool pressed = stretch.press != Stretch::noPress;
    const int wait = (pressed ? pressGap + stretch.press : from.wait) - Stretch::frames;
    state.wait = std::max(0, wait) & 0xF;
    const int changes =
        from.changes + (stretch.direction != from.direction ? 1 : 0) + (pressed ? 1 : 0);
    state.changes = static_cast<std::uint16_t>(std::min<int>(changes, mostChanges));

    const std::uint32_t known = states.findOrAdd(state);
    if (known == StateSet::missing) {
        addEdge(index, states.size() - 1);
        found = found || listener.arrived(*this, states.size() - 1);
        return;
    }
    if (known == index) {
        states[index].resting = true;
        return;
    }
    addEdge(index, known);
    // Reached in the same time, but more calmly.
    if (known >= layerEnd && state.changes < states[known].changes) states[known] = state;
}

void Search::addEdge(std::uint32_t index, std::uint32_t next) {
    const std::size_t count = states[index].edges;
    for (std::size_t i = edges.size() - count; i < edges.size(); ++i) {
        if (edges[i] == next) return;
    }
    edges.push(next);
    states[index].edges = (count + 1) & 0xF;
}

// A press in the air, away from walls, is forgotten.
bool Search::pressMatters(WorldPoint place) const {
    const int column = cellOf(place.x), row = cellOf(place.y);
    return map.at(column, row + 1) != LevelMap::empty ||
           map.at(column + 1, row) != LevelMap::empty || map.at(column - 1, row) != LevelMap::empty;
}

bool Search::isPassed(int column, int row) const {
    return map.contains(column, row) && passed[static_cast<std::size_t>(row) * map.getWidth() +
                                               static_cast<std::size_t>(column)] != 0;
}

Inputs Search::inputsTo(std::uint32_t state) const {
    Inputs backward;
    for (; state != 0; state = states[state].parent) {
        for (int frame = Stretch::frames; frame-- > 0;) {
            backward.push_back({states[state].direction, states[state].press == frame});
        }
    }
    Inputs inputs = inputsBefore;
    inputs.insert(inputs.end(), backward.rbegin(), backward.rend());
    return inputs;
}

Inputs Search::inputsTo(std::uint32_t state, Stretch stretch, int frame) const {
    Inputs inputs = inputsTo(state);
    for (int i = 0; i <= frame; ++i) inputs.push_back({stretch.direction, stretch.press == i});
    return inputs;
}
