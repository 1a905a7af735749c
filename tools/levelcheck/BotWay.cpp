// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/BotWay.h"

Inputs BotWay::find(const std::vector<const Zone*>& through, const std::string& goal) const {
    Inputs inputs = firstInputs();
    for (const Zone* zone : through) inputs = reach(*zone, inputs);
    Search search(map, inputs, limit);
    GoalPlaces places(map, zones);
    places.stopAtGoal(goal);
    search.run(places);
    const GoalPlaces::Way* way = places.fastest(goal);
    if (!way) throw Unreached("no way to the goal" + (goal.empty() ? "" : " in " + goal));
    return search.inputsTo(way->state, way->stretch, way->frame);
}

Inputs BotWay::reach(const Zone& zone, const Inputs& before) const {
    struct Arrival : Search::Listener {
        explicit Arrival(const Zone& wanted) : zone(wanted) {}
        bool arrived(const Search& search, std::uint32_t index) override {
            const RunnerState& state = search.getStates()[index];
            if (!zone.contains(state.column(), state.row())) return false;
            found = index;
            return true;
        }
        const Zone& zone;
        std::uint32_t found = 0;
    } arrival(zone);
    Search search(map, before, limit);
    if (search.run(arrival) != Search::End::found) throw Unreached("no way to " + zone.name);
    return search.inputsTo(arrival.found);
}
