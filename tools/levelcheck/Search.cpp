// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Search.h"

#include <algorithm>

static constexpr std::uint32_t mostArrivals = 15; // by one of 3 directions and 5 times of a press
static constexpr std::size_t idleFrames = 8;      // while the title's last key is released

Search::Search(const LevelMap& level)
    : Search(level, RunnerState::of(Run(level, Inputs(idleFrames)).player), Inputs(idleFrames)) {}

Search::Search(const LevelMap& level, RunnerState first, const Inputs& before,
               std::uint32_t mostStates)
    : map(level), inputsBefore(before), limit(mostStates), states(limit + mostArrivals),
      passed(std::size_t{level.getWidth()} * level.getHeight()) {
    first.edges = 0;
    first.winning = first.resting = false;
    states.findOrAdd(first, states.prepare(first));
}

bool Search::run(const GoalHandler& goalHandler, const ArrivalTest& arrivalTest) {
    onGoal = goalHandler;
    onArrival = arrivalTest;
    for (std::uint32_t index = 0; index < states.size(); ++index) {
        if (index == layerEnd) {
            layerEnd = states.size();
            ++depth;
        }
        expand(index);
        addArrivals(index);
        if (found || states.size() >= limit) return false;
    }
    return true;
}

void Search::expand(std::uint32_t index) {
    const RunnerState from = states[index];
    constexpr Input::Direction all[] = {Input::none, Input::left, Input::right};
    for (int turn = 0; turn < 3; ++turn) {
        // The direction that is held already comes first, so that paths have few changes.
        const Input::Direction direction = all[(from.last.direction + turn) % 3];
        Player player = from.player();
        const Segment segment{direction, Segment::noPress};
        bool alive = true;
        for (int frame = 0; alive && frame < Segment::frames; ++frame) {
            if (frame >= from.wait && pressMatters(player.position())) {
                follow(player, index, {direction, static_cast<std::uint8_t>(frame)});
            }
            alive = step(player, index, segment, frame);
        }
        if (alive) arrive(player, index, segment);
    }
}

// The rest of a segment, from its press on.
void Search::follow(Player player, std::uint32_t index, Segment segment) {
    for (int frame = segment.press; frame < Segment::frames; ++frame) {
        if (!step(player, index, segment, frame)) return;
    }
    arrive(player, index, segment);
}

// False if the play ends here.
bool Search::step(Player& player, std::uint32_t index, Segment segment, int frame) {
    ::step(player, segment.input(frame), map);
    const WorldPoint place = player.position();
    const int column = cellOf(place.x), row = cellOf(place.y);
    if (!map.contains(column, row)) {
        outsidePassed = true;
        return false;
    }
    passed[cellIndex(map, column, row)] = 1;
    if (player.kickSpeed() < goalSpeed) return true;
    states[index].winning = true;
    onGoal(
        {index, segment, frame, framesBefore() + static_cast<std::size_t>(frame) + 1, column, row});
    return false;
}

void Search::arrive(const Player& player, std::uint32_t index, Segment segment) {
    RunnerState state = RunnerState::of(player);
    state.parent = index;
    state.last = segment;
    const bool pressed = segment.press != Segment::noPress;
    const int wait = (pressed ? pressGap + segment.press : states[index].wait) - Segment::frames;
    state.wait = std::max(0, wait) & 0xF;
    arrivals.emplace_back(state, states.prepare(state));
}

void Search::addArrivals(std::uint32_t index) {
    for (const auto& [state, hash] : arrivals) {
        const std::uint32_t known = states.findOrAdd(state, hash);
        if (known == StateSet::missing) {
            found = found || onArrival(states.size() - 1);
        } else if (known == index) {
            states[index].resting = true;
        } else if (states[known].parent != index) {
            addEdge(index, known);
        }
    }
    arrivals.clear();
}

void Search::addEdge(std::uint32_t index, std::uint32_t next) {
    const std::uint8_t count = states[index].edges;
    if (std::find(edges.end() - count, edges.end(), next) != edges.end()) return;
    edges.push_back(next);
    states[index].edges = (count + 1) & 0xF;
}

// A press in the air, away from walls, does nothing.
bool Search::pressMatters(WorldPoint place) const {
    const int column = cellOf(place.x), row = cellOf(place.y);
    return map.at(column, row + 1) != LevelMap::empty ||
           map.at(column + 1, row) != LevelMap::empty || map.at(column - 1, row) != LevelMap::empty;
}

Inputs Search::inputsTo(std::uint32_t state) const {
    Inputs backward;
    for (; state != 0; state = states[state].parent) {
        for (int frame = Segment::frames; frame-- > 0;) {
            backward.push_back(states[state].last.input(frame));
        }
    }
    Inputs inputs = inputsBefore;
    inputs.insert(inputs.end(), backward.rbegin(), backward.rend());
    return inputs;
}

Inputs Search::inputsTo(const Goal& goal) const {
    Inputs inputs = inputsTo(goal.state);
    for (int i = 0; i <= goal.frame; ++i) inputs.push_back(goal.segment.input(i));
    return inputs;
}
