// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "tools/levelcheck/StateSet.h"

// Explores what a player can do in a level, all paths side by side, one segment after another. Of
// states with the same key it keeps the first, with exact numbers, so that the path to each state
// can be replayed. A path that only another of those states has is missed.
class Search {
public:
    // A frame in which the goal is reached.
    struct Goal {
        std::uint32_t state = 0; // the last before it
        Segment segment;
        int frame = 0;          // of the segment
        std::size_t frames = 0; // of the whole play, the goal's included
        int column = 0;
        int row = 0;
    };
    using GoalHandler = std::function<void(const Goal& goal)>;

    // Called for each new state; true ends the search.
    using ArrivalTest = std::function<bool(std::uint32_t state)>;

    // Begins at the start of the play.
    explicit Search(const LevelMap& level);

    // Begins at a state, to which these inputs lead. With this many states it gives up; those of
    // the default take less than 4 GiB.
    Search(const LevelMap& level, RunnerState first, const Inputs& before,
           std::uint32_t mostStates = 40'000'000);

    // Whether everything was searched: nothing ended it before.
    bool run(const GoalHandler& goalHandler, const ArrivalTest& arrivalTest);

    const StateSet& getStates() const { return states; }

    // The states that were known already when a segment led to them, `edges` of them for each
    // state, in the order of the states. Those that were new have the state as their parent.
    const std::vector<std::uint32_t>& getEdges() const { return edges; }

    // Frames from the start of the play to the states whose segments are being followed.
    std::size_t framesBefore() const { return inputsBefore.size() + depth * Segment::frames; }

    // Whether the runner was in a cell after a frame.
    bool isPassed(int column, int row) const {
        return map.contains(column, row) && passed[cellIndex(map, column, row)] != 0;
    }
    bool isOutsidePassed() const { return outsidePassed; }

    // The inputs from the start of the play to a state or a goal.
    Inputs inputsTo(std::uint32_t state) const;
    Inputs inputsTo(const Goal& goal) const;

private:
    void expand(std::uint32_t index);
    void follow(Player player, std::uint32_t index, Segment segment);
    bool step(Player& player, std::uint32_t index, Segment segment, int frame);
    void arrive(const Player& player, std::uint32_t index, Segment segment);
    void addArrivals(std::uint32_t index);
    void addEdge(std::uint32_t index, std::uint32_t next);
    bool pressMatters(WorldPoint place) const;

    const LevelMap& map;
    Inputs inputsBefore;
    std::uint32_t limit;
    StateSet states;
    std::vector<std::pair<RunnerState, std::uint64_t>> arrivals; // after one state, with hashes
    std::vector<std::uint32_t> edges;
    std::vector<std::uint8_t> passed; // one a cell, rows from the top
    bool outsidePassed = false;
    std::uint32_t layerEnd = 1; // after the states whose segments are being followed
    std::size_t depth = 0;      // segments up to them
    bool found = false;
    GoalHandler onGoal;
    ArrivalTest onArrival;
};
