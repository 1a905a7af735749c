// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Floors.h"

// So far the searches go, in turn: most floors have a way that is found soon.
static constexpr std::uint32_t searchStates[] = {10'000, 100'000, 1'000'000};

// Ends at the first way on.
class Floors::WayOn : public Search::Listener {
public:
    explicit WayOn(const Floors& owner) : floors(owner) {}

    void goalReached(const Search&, std::uint32_t, Stretch, int, WorldPoint) override {
        found = true;
    }

    bool arrived(const Search& search, std::uint32_t index) override {
        const RunnerState& state = search.getStates()[index];
        found = found || state.isNearStart() || floors.free[floors.floorAt(state)];
        return found;
    }

    bool isFound() const { return found; }

private:
    const Floors& floors;
    bool found = false;
};

Floors::Floors(const LevelMap& level, const Search& whole) : map(level) {
    findFloors();
    findStands(whole);
    for (const std::uint32_t states : searchStates) {
        while (spread(states)) {}
    }
    for (const std::uint32_t floor : order) {
        if (free[floor]) continue;
        (exhausted[floor] ? traps : unsure).add(stands[floor].column(), stands[floor].row());
    }
}

void Floors::findFloors() {
    floors.resize(std::size_t{map.getWidth()} * map.getHeight());
    auto cell = floors.begin();
    for (int row = 0; row < static_cast<int>(map.getHeight()); ++row) {
        bool before = false;
        for (int column = 0; column < static_cast<int>(map.getWidth()); ++column, ++cell) {
            const bool floor = RunnerState::isFloor(map, column, row);
            if (floor) *cell = before ? count : ++count;
            before = floor;
        }
    }
}

// Floors near the start lead on.
void Floors::findStands(const Search& whole) {
    stands.resize(count + 1);
    free.resize(count + 1);
    exhausted.resize(count + 1);
    std::vector<bool> known(count + 1);
    for (std::uint32_t i = 0; i < whole.getStates().size(); ++i) {
        const RunnerState& state = whole.getStates()[i];
        const std::uint32_t floor = floorAt(state);
        if (floor == 0) continue;
        if (state.isNearStart()) free[floor] = true;
        if (known[floor]) continue;
        known[floor] = true;
        stands[floor] = state;
        order.push_back(floor);
    }
}

// The floor on which a state stands, or 0.
std::uint32_t Floors::floorAt(const RunnerState& state) const {
    if (!state.isStanding(map)) return 0;
    return floors[static_cast<std::size_t>(state.row()) * map.getWidth() +
                  static_cast<std::size_t>(state.column())];
}

// One search for each floor that is not known to lead on, the last found first, since goals lie
// there. True if one more does.
bool Floors::spread(std::uint32_t mostStates) {
    bool changed = false;
    for (auto floor = order.rbegin(); floor != order.rend(); ++floor) {
        if (free[*floor]) continue;
        WayOn wayOn(*this);
        Search search(map, stands[*floor], mostStates);
        exhausted[*floor] = search.run(wayOn) == Search::End::exhausted;
        if (wayOn.isFound()) free[*floor] = changed = true;
    }
    return changed;
}
