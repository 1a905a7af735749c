// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <vector>

#include "game/LevelMap.h"
#include "tools/levelcheck/Blocks.h"
#include "tools/levelcheck/StateSet.h"

// Explores what a hand can make of a level, all ways side by side, stretch of frames by stretch. Of
// states with the same key the one that was reached first is kept, exact to the last digit, so the
// way to each state can be replayed. What only another of them could do is missed.
class Search {
public:
    // What happens on the way; the owner of a search listens.
    class Listener {
    public:
        virtual ~Listener() = default;

        // The goal is reached in a frame of a stretch, counted in it, from a state.
        virtual void goalReached(const Search& /*search*/, std::uint32_t /*state*/,
                                 Stretch /*stretch*/, int /*frame*/, WorldPoint /*place*/) {}

        // A new state, at the end of a stretch. True ends the search: it was looked for.
        virtual bool arrived(const Search& /*search*/, std::uint32_t /*state*/) { return false; }
    };

    enum class End { exhausted, found, full };

    // `before` are the inputs that led to the state from which it begins. It ends in order with so
    // many states.
    Search(const LevelMap& level, const Inputs& before, std::uint32_t mostStates);

    // The same from any state, as if the play began there.
    Search(const LevelMap& level, const RunnerState& first, std::uint32_t mostStates);

    End run(Listener& listener);

    const StateSet& getStates() const { return states; }

    // The states that were reached from each state in their order, `edges` of them each.
    const Blocks<std::uint32_t>& getEdges() const { return edges; }

    // Frames from the start of the play to the states whose stretches are followed now.
    std::size_t framesBehind() const { return inputsBefore.size() + depth * Stretch::frames; }

    // Whether the runner was in a cell between two frames.
    bool isPassed(int column, int row) const;
    bool isOutsidePassed() const { return outsidePassed; }

    // The inputs from the start of the play to a state, or on to a frame of a stretch behind it.
    Inputs inputsTo(std::uint32_t state) const;
    Inputs inputsTo(std::uint32_t state, Stretch stretch, int frame) const;

private:
    void expand(std::uint32_t index, Listener& listener);
    void follow(Player player, std::uint32_t index, Stretch stretch, int frame, Listener& listener);
    bool step(Player& player, std::uint32_t index, Stretch stretch, int frame, Listener& listener);
    void arrive(const Player& player, std::uint32_t index, Stretch stretch, Listener& listener);
    void addEdge(std::uint32_t index, std::uint32_t next);
    bool pressMatters(WorldPoint place) const;

    const LevelMap& map;
    Inputs inputsBefore; // none if it does not begin at the start
    std::uint32_t limit;
    StateSet states;
    Blocks<std::uint32_t> edges;
    std::vector<std::uint8_t> passed; // a cell each, rows from the top
    bool outsidePassed = false;
    std::uint32_t layerEnd = 1; // behind the states whose stretches are followed now
    std::size_t depth = 0;      // stretches up to them
    bool found = false;
};
