// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/GoalPlaces.h"

#include <algorithm>

static constexpr int lateFrames = 32; // in which a late press may still reach the goal

static bool isFaster(const Search::Goal& one, const Search::Goal& other) {
    return one.frames < other.frames;
}

void GoalPlaces::add(const Search& search, const Search::Goal& goal) {
    const Zone* zone = zones.goalAt(goal.column, goal.row);
    if (zone || !zones.hasGoals()) {
        const auto known = goals.find(zone ? zone->name : "");
        if (known != goals.end() && !isFaster(goal, known->second)) return;
        if (!isFluke(search, goal)) goals[zone ? zone->name : ""] = goal;
        return;
    }
    const std::pair cell(goal.row, goal.column);
    if (outside.count(cell) > 0) return;
    if (isFluke(search, goal)) {
        const auto [known, isNew] = flukes.insert({cell, goal});
        if (!isNew && isFaster(goal, known->second)) known->second = goal;
    } else {
        flukes.erase(cell);
        outside[cell] = goal;
    }
}

const Search::Goal* GoalPlaces::fastest(const std::string& name) const {
    const Search::Goal* best = nullptr;
    for (const auto& [zone, goal] : goals) {
        if ((name.empty() || zone == name) && (!best || isFaster(goal, *best))) best = &goal;
    }
    return best;
}

std::vector<Search::Goal> GoalPlaces::sorted(const Cells& cells) {
    std::vector<Search::Goal> sorted;
    for (const auto& [cell, goal] : cells) sorted.push_back(goal);
    std::stable_sort(sorted.begin(), sorted.end(), isFaster);
    return sorted;
}

bool GoalPlaces::isFluke(const Search& search, const Search::Goal& goal) const {
    Inputs inputs = search.inputsTo(goal);
    const auto last = std::find_if(inputs.rbegin(), inputs.rend(),
                                   [](const Input& input) { return input.press; });
    if (last == inputs.rend()) return false;
    const auto press = static_cast<std::size_t>(inputs.rend() - last) - 1;
    inputs[press].press = false;
    inputs.resize(inputs.size() + lateFrames, {goal.segment.direction});
    const auto reachesWithPressAt = [&](std::size_t frame) {
        Inputs tried = inputs;
        tried[frame].press = true;
        return Run(map, tried).goal;
    };
    return !(press > 0 && reachesWithPressAt(press - 1)) && !reachesWithPressAt(press + 1);
}

Inputs pathThrough(const LevelMap& map, const Zones& zones, const std::vector<const Zone*>& through,
                   const std::string& goal, Findings& findings) {
    Inputs inputs = Search::firstInputs();
    for (const Zone* zone : through) {
        Search search(map, inputs);
        std::uint32_t last = StateSet::missing;
        search.run([](const Search::Goal&) {},
                   [&](std::uint32_t index) {
                       const RunnerState& state = search.getStates()[index];
                       if (zone->contains(state.column(), state.row())) last = index;
                       return last == index;
                   });
        if (last == StateSet::missing) {
            findings.addError("no path to " + zone->name + " was found");
            return {};
        }
        inputs = search.inputsTo(last);
    }
    Search search(map, inputs);
    GoalPlaces places(map, zones);
    search.run([&](const Search::Goal& reached) { places.add(search, reached); },
               [&](std::uint32_t) { return places.fastest(goal) != nullptr; });
    if (const Search::Goal* reached = places.fastest(goal)) return search.inputsTo(*reached);
    findings.addError("no path through these zones to the goal was found");
    return {};
}
