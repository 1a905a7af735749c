// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/GoalPlaces.h"

#include <algorithm>
#include <memory>

static constexpr int lateFrames = 32; // in which a late press may still reach the goal

void GoalPlaces::add(const Search& search, const Search::Goal& goal) {
    const Zone* zone = zones.goalAt(goal.column, goal.row);
    const Place place = isInside(zone) ? Place(zone, 0, 0) : Place(nullptr, goal.row, goal.column);
    const auto known = best.find(place);
    const auto isBetter = [&](bool fluke) {
        return known == best.end() ||
               std::pair(fluke, goal.frames) < std::pair(known->second.fluke, known->second.frames);
    };
    if (!isBetter(false)) return;
    const bool fluke = isFluke(search, goal);
    if (isBetter(fluke)) best[place] = {goal, fluke};
}

const Search::Goal* GoalPlaces::fastest(const std::string& name) const {
    const Search::Goal* fastest = nullptr;
    for (const auto& [place, goal] : best) {
        const Zone* zone = std::get<0>(place);
        if (goal.fluke || !isInside(zone) || (!name.empty() && zone->name != name)) continue;
        if (!fastest || goal.frames < fastest->frames) fastest = &goal;
    }
    return fastest;
}

std::vector<Search::Goal> GoalPlaces::getOutside(bool flukes) const {
    std::vector<Search::Goal> outside;
    for (const auto& [place, goal] : best) {
        if (!isInside(std::get<0>(place)) && goal.fluke == flukes) outside.push_back(goal);
    }
    std::stable_sort(outside.begin(), outside.end(),
                     [](auto& one, auto& other) { return one.frames < other.frames; });
    return outside;
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
    auto search = std::make_unique<Search>(map);
    for (const Zone* zone : through) {
        std::uint32_t last = StateSet::missing;
        search->run([](const Search::Goal&) {},
                    [&](std::uint32_t index) {
                        const RunnerState& state = search->getStates()[index];
                        if (zone->contains(state.column(), state.row())) last = index;
                        return last == index;
                    });
        if (last == StateSet::missing) {
            findings.addError("no path to " + zone->name + " was found");
            return {};
        }
        search = std::make_unique<Search>(map, search->getStates()[last], search->inputsTo(last));
    }
    GoalPlaces places(map, zones);
    search->run([&](const Search::Goal& reached) { places.add(*search, reached); },
                [&](std::uint32_t) { return places.fastest(goal) != nullptr; });
    if (const Search::Goal* reached = places.fastest(goal)) return search->inputsTo(*reached);
    findings.addError("no path through these zones to the goal was found");
    return {};
}
