// SPDX-License-Identifier: Zlib
// The input scripts: how they are read, and what the shipped level's scripts reach.
#include "tools/replay/InputScript.h"

#include <cstdio>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "game/LevelMap.h"
#include "tests/support/GoalRun.h"

// The key presses before each frame up to the end, such as "3: +left -right"; or the failure.
static std::string played(const std::string& text) {
    InputScript script;
    std::istringstream source(text);
    std::string failure;
    if (!script.read(source, failure)) return failure;
    static const char* const names[] = {"up", "left", "right", "down", "action", "escape"};
    std::string result;
    for (std::uint32_t frame = 0; frame <= script.getEnd(); ++frame) {
        std::string presses;
        for (const InputScript::Press& press : script.pressesBefore(frame)) {
            presses += (press.pressed ? " +" : " -") + std::string(names[press.key]);
        }
        if (!presses.empty()) result += std::to_string(frame) + ":" + presses + "\n";
    }
    return result + "end " + std::to_string(script.getEnd());
}

TEST(InputScript, IsPlayedAsWrittenOrRefusedWithTheLine) {
    const std::pair<const char*, const char*> cases[] = {
        // Directions are held until a line without them.
        {"0 left\n2 left up\n3 right\n5\n9 end",
         "0: +left\n2: +up\n3: -up -left +right\n5: -right\nend 9"},
        {"1 down right left up\n2 end",
         "1: +up +left +right +down\n2: -up -left -right -down\nend 2"},
        // Other keys are pressed and released in their frame.
        {"1 right action\n2 action right\n4 escape\n5 end",
         "1: +right +action -action\n2: +action -action\n4: -right +escape -escape\nend 5"},
        {"# start\n\n  1\t left # left at first\r\n   \n2 end#5 up\n# done\n",
         "1: +left\n2: -left\nend 2"},
        {"6000000 ", "the last line is not \"end\""},
        {"6000001 end", "line 1: a run has at most 6000000 frames"},
        {"-1 left", "line 1: \"-1\" is not a frame number"},
        {"# x\n1x left", "line 2: \"1x\" is not a frame number"},
        {"4294967296 up", "line 1: \"4294967296\" is not a frame number"},
        {"1 Left\n2 end", "line 1: \"Left\" is not a key"},
        {"1 left\n1 right", "line 2: frame 1 does not come after the one before"},
        // A recording without its end plays up to its last whole line.
        {"# tarnwick run 1\n1 left\n4 left\n70 ri", "1: +left\nend 5"},
        {"# tarnwick run 2\n", "line 1: a newer tarnwick-replay recorded this run"},
        {"# tarnwick run 1\n# seed: x\n", "line 2: \"# seed: x\" is not valid"},
        {"# tarnwick run 1\n# pitches: ../a\n", "line 2: \"# pitches: ../a\" is not valid"},
    };
    for (const auto& [script, expected] : cases) EXPECT_EQ(played(script), expected);
}

TEST(GoalRun, EachScriptReachesTheGoalOnItsOwnPath) {
    const LevelMap map = GoalRun::loadLevel();
    const std::pair<const char*, std::string> scripts[] = {
        {"goal", "chimney"}, {"chimney", "chimney"}, {"well", "well"}, {"flue", "flue"}};
    for (const auto& [script, zone] : scripts) {
        const std::vector<GoalRun::Frame> run = GoalRun::find(map, script);
        ASSERT_FALSE(run.empty()) << script << " does not reach the goal";
        const auto x = static_cast<int>(run.back().before.x);
        const auto y = static_cast<int>(run.back().before.y);
        bool inZone = false;
        std::ifstream zones(ZONES);
        for (std::string line; std::getline(zones, line);) {
            int left = 0, right = 0, top = 0, bottom = 0;
            const std::string form = "goal " + zone + " %d-%d %d-%d";
            if (std::sscanf(line.c_str(), form.c_str(), &left, &right, &top, &bottom) < 4) continue;
            inZone |= x >= left && x <= right && y >= top && y <= bottom;
        }
        EXPECT_TRUE(inZone) << script << " reaches the goal at " << x << ", " << y;
    }
}
