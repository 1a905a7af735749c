// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "tools/levelcheck/Places.h"
#include "tools/levelcheck/Search.h"
#include "tools/levelcheck/Zones.h"

// Where a search reaches the goal, and the fastest ways there, for each goal zone one. A goal that
// hangs on a single frame, its last press not a frame earlier nor later, is luck and no way.
class GoalPlaces : public Search::Listener {
public:
    // A way that reached the goal.
    struct Way {
        std::uint32_t state = 0;
        Stretch stretch;
        int frame = 0; // of the stretch
        int column = 0;
        int row = 0;
        std::size_t frames = 0;    // of the whole play, the goal's included
        std::uint16_t changes = 0; // up to the state
    };
    using Cell = std::pair<int, int>; // row, column: so that maps of them are in reading order

    GoalPlaces(const LevelMap& level, const Zones& itsZones) : map(level), zones(itsZones) {}

    // Ends the search at the first goal in a zone of this name, "" for any.
    void stopAtGoal(const std::string& name) {
        stopping = true;
        wanted = name;
    }

    void goalReached(const Search& search, std::uint32_t state, Stretch stretch, int frame,
                     WorldPoint place) override;
    bool arrived(const Search& search, std::uint32_t state) override;

    // The fastest way to the goal, in the zone of that name or, "", in any; null: there is none.
    const Way* fastest(const std::string& name) const;

    // Goals outside the goal zones that are no luck, and the cells that have nothing but luck.
    const std::map<Cell, Way>& getOutside() const { return outside; }
    Places getLucky() const;

private:
    bool isLuck(const Search& search, const Way& way) const;

    const LevelMap& map;
    const Zones& zones;
    std::map<std::string, Way> ways; // by zone; without zones all under ""
    std::map<Cell, Way> outside;
    std::set<Cell> lucky;
    bool stopping = false;
    std::string wanted;
};
