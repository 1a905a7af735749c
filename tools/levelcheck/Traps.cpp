// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Traps.h"

#include <vector>

// Which states lead on, found by going over all edges forth and back until nothing changes.
class Escapes {
public:
    explicit Escapes(const Search& search)
        : states(search.getStates()), edges(search.getEdges()), free(states.size()) {
        for (std::uint32_t i = 0; i < states.size(); ++i) {
            free[i] = states[i].winning || states[i].isNearStart();
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

Traps::Traps(const Search& search) {
    const StateSet& states = search.getStates();
    const Escapes escapes(search);
    bool anyRest = false;
    for (std::uint32_t i = 0; i < states.size(); ++i) {
        trapped += escapes.isFree(i) ? 0 : 1;
        anyRest = anyRest || (!escapes.isFree(i) && states[i].resting);
    }
    for (std::uint32_t i = 0; trapped > 0 && i < states.size(); ++i) {
        if (escapes.isFree(i) || (anyRest && !states[i].resting)) continue;
        const std::size_t known = ends.all().size();
        ends.add(states[i].column(), states[i].row());
        if (ends.all().size() == known) continue;
        std::uint32_t entrance = i;
        while (entrance != 0 && !escapes.isFree(entrance)) entrance = states[entrance].parent;
        entrances.push_back(states[entrance]);
    }
}
