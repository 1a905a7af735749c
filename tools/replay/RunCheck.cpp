// SPDX-License-Identifier: Zlib
#include "tools/replay/RunCheck.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "game/PlayRules.h"
#include "tools/replay/RulesRun.h"
#include "tools/replay/RunLevel.h"
#include "tools/replay/RunLink.h"

static std::string decimals(double number, int count) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.*f", count, number);
    return digits;
}

double RunResult::seconds() const {
    return frames * framePeriod / 1000.0;
}

std::string RunResult::text() const {
    return std::string(goal ? "goal" : "no goal") + ", " + std::to_string(frames) + " frames, " +
           decimals(seconds(), 3) + " s";
}

static std::string brokenClaim(const InputScript::Header& header, const RunResult& result) {
    if (!header.goalFrames || (result.goal && *header.goalFrames == result.frames)) return "";
    return "the header claims the goal after " + std::to_string(*header.goalFrames) + " frames";
}

std::string RunCheck::name() const {
    return player.empty() ? std::filesystem::path(file).stem().string() : player;
}

RunCheck RunCheck::of(const std::string& file, const RunLevel& level) {
    RunCheck check;
    check.file = RunLink::nameOf(file);
    try {
        const InputScript script = RunLink::read(file);
        check.player = script.getHeader().player;
        check.cutShort = script.isCutShort();
        check.problem = level.refusal(script.getHeader());
        if (!check.problem.empty()) return check;
        RulesRun run(script, level.getMap());
        while (run.step()) {}
        check.result.goal = run.reachesGoal();
        check.result.frames = run.getPlayFrames();
        check.titleFrames = run.getTitleFrames();
        check.problem = brokenClaim(script.getHeader(), check.result);
    } catch (const std::runtime_error& error) {
        check.problem = error.what();
    }
    return check;
}

std::string RunCheck::line(const RunLevel& level) const {
    std::string text = file + ": " + result.text() + ", " + level.getName() + ", ";
    if (!problem.empty()) return text + "not ok: " + problem;
    return text + (cutShort ? "ok, but the recording was cut short" : "ok");
}

// The bytes of the UTF-8 character at the start of a text, 1 to 4; 0 if it is malformed (RFC 3629).
static std::size_t utf8Length(std::string_view text) {
    const auto byte = [&](std::size_t i) -> unsigned {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
    };
    const unsigned first = byte(0);
    const unsigned second = byte(1);
    if (first < 0x80) return 1;
    const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    const bool overlong =
        first < 0xC2 || (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool surrogate = first == 0xED && second > 0x9F;
    const bool tooLarge = first > 0xF4 || (first == 0xF4 && second > 0x8F);
    if (overlong || surrogate || tooLarge) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if (byte(i) >> 6 != 2) return 0;
    }
    return length;
}

// A text of any bytes as a JSON string.
static std::string jsonText(std::string_view text) {
    std::string quoted = "\"";
    while (!text.empty()) {
        const std::size_t length = utf8Length(text);
        const char letter = text.front();
        if (length == 0) {
            quoted += "\\ufffd";
        } else if (letter == '"' || letter == '\\') {
            quoted += std::string("\\") + letter;
        } else if (length == 1 && letter < ' ') {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(letter));
            quoted += escaped;
        } else {
            quoted += text.substr(0, length);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return quoted + "\"";
}

std::string RunCheck::json(const std::vector<RunCheck>& checks, const RunLevel& level) {
    std::string text = "[";
    for (const RunCheck& check : checks) {
        if (text.size() > 1) text += ",";
        text += "\n  {\"file\": " + jsonText(check.file) +
                ", \"ok\": " + (check.problem.empty() ? "true" : "false") +
                ", \"goal\": " + (check.result.goal ? "true" : "false") +
                ", \"frames\": " + std::to_string(check.result.frames) +
                ", \"seconds\": " + decimals(check.result.seconds(), 3) +
                ", \"titleFrames\": " + std::to_string(check.titleFrames) +
                ", \"level\": " + jsonText(level.getName()) + ", \"levelHash\": \"" +
                RunLevel::hashText(level.getHash()) + "\"" +
                ", \"player\": " + jsonText(check.player) +
                ", \"cutShort\": " + (check.cutShort ? "true" : "false") +
                ", \"problem\": " + jsonText(check.problem) + "}";
    }
    return text + "\n]\n";
}

std::string RunCheck::table(std::vector<RunCheck> checks) {
    const auto place = [](const RunCheck& check) {
        return std::pair(!check.result.goal, check.result.goal ? check.result.frames : 0);
    };
    std::stable_sort(checks.begin(), checks.end(), [&](const RunCheck& one, const RunCheck& other) {
        return place(one) < place(other);
    });
    std::string text;
    for (std::size_t i = 0; i < checks.size(); ++i) {
        text +=
            std::to_string(i + 1) + ". " + checks[i].name() + ": " + checks[i].result.text() + "\n";
    }
    return text;
}
