// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Traps.h"

#include <cstdlib>

static constexpr int startColumns = 20; // the start's neighbourhood, to each side
static constexpr int startRows = 8;

static bool isNearStart(const RunnerState& state) {
    return std::abs(state.column() - cellOf(Run::start.x)) <= startColumns &&
           std::abs(state.row() - cellOf(Run::start.y)) <= startRows;
}

// Which states lead on, found by going over all edges forth and back until nothing changes.
class Escapes {
public:
    explicit Escapes(const Search& search)
        : states(search.getStates()), edges(search.getEdges()), free(states.size()) {
        for (std::uint32_t i = 0; i < states.size(); ++i) {
            free[i] = states[i].winning || isNearStart(states[i]);
        }
        while (sweepBack() && sweepForth()) {}
    }

    bool isFree(std::uint32_t state) const { return free[state]; }

private:
    bool leadsOn(std::uint32_t state, std::size_t firstEdge) const {
        for (std::size_t i = firstEdge; i < firstEdge + states[state].edges; ++i) {
            if (free[edges[i]]) return true;
        }
        return false;
    }

    bool sweepForth() {
        bool changed = false;
        std::size_t edge = 0;
        for (std::uint32_t i = 0; i < states.size(); edge += states[i++].edges) {
            if (!free[i] && leadsOn(i, edge)) free[i] = changed = true;
        }
        return changed;
    }

    bool sweepBack() {
        bool changed = false;
        std::size_t edge = edges.size();
        for (std::uint32_t i = states.size(); i-- > 0;) {
            edge -= states[i].edges;
            if (!free[i] && leadsOn(i, edge)) free[i] = changed = true;
        }
        return changed;
    }

    const StateSet& states;
    const Blocks<std::uint32_t>& edges;
    std::vector<bool> free;
};

Places findTraps(const Search& search) {
    const Escapes escapes(search);
    Places places;
    for (std::uint32_t i = 0; i < search.getStates().size(); ++i) {
        if (escapes.isFree(i)) continue;
        places.add(search.getStates()[i].column(), search.getStates()[i].row());
    }
    return places;
}
