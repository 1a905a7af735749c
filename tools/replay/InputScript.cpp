// SPDX-License-Identifier: Zlib
#include "tools/replay/InputScript.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <stdexcept>

#include "base/FilePath.h"

static constexpr const char* keyNames[InputScript::keyCount] = {"up",   "left",   "right",
                                                                "down", "action", "escape"};
static constexpr std::string_view blanks = " \t\r\v\f";

// The next word of a line, which loses it; empty at the end.
static std::string_view takeWord(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(blanks));
    line.remove_prefix(word.size());
    return word;
}

template <typename Number>
static bool readNumber(std::string_view word, Number& number, int base = 10) {
    const char* const last = word.data() + word.size();
    const auto [stop, problem] = std::from_chars(word.data(), last, number, base);
    return problem == std::errc() && stop == last;
}

// The text with a question mark for each control character, which a terminal could obey.
static std::string harmless(std::string_view text) {
    std::string shown(text);
    for (char& letter : shown) {
        if (static_cast<unsigned char>(letter) < ' ' || letter == '\x7F') letter = '?';
    }
    return shown;
}

static std::string quoted(std::string_view text) {
    constexpr std::size_t longest = 40;
    std::string shown = "\"";
    shown += harmless(text.substr(0, longest));
    shown += text.size() > longest ? "...\"" : "\"";
    return shown;
}

const char* InputScript::nameOf(int key) {
    return keyNames[key];
}

InputScript InputScript::fromFile(const std::string& path) {
    std::ifstream source = FilePath(path).open();
    if (!source.is_open()) throw std::runtime_error("cannot read " + path);
    InputScript script;
    std::string failure;
    if (!script.read(source, failure)) throw std::runtime_error(path + ", " + failure);
    return script;
}

bool InputScript::read(std::istream& source, std::string& failure) {
    std::string line;
    for (int number = 1; std::getline(source, line); ++number) {
        if (number == 1 && line.starts_with("# tarnwick run ")) {
            if (line != headerLine) {
                failure = "line 1: a newer tarnwick-replay recorded this run";
                return false;
            }
            header.given = true;
        }
        // A recorder that is killed may leave a part of its last line.
        if (header.given && !ended && source.eof()) break;
        const bool isHeader = header.given && line.starts_with('#');
        if (!(isHeader ? readHeaderLine(line, failure) : readLine(line, failure))) {
            failure = "line " + std::to_string(number) + ": " + failure;
            return false;
        }
    }
    if (ended) return true;
    end = lines.empty() ? 0 : lines.back().frame + 1;
    if (!header.given) failure = "the last line is not \"end\"";
    return header.given;
}

// "# name: value"; other comments mean nothing.
bool InputScript::readHeaderLine(std::string_view line, std::string& failure) {
    const std::size_t colon = line.find(": ");
    if (colon == std::string_view::npos || colon < 2) return true;
    const std::string_view name = line.substr(2, colon - 2);
    std::string_view value = line.substr(colon + 2);
    bool valid = true;
    if (name == "game") header.game = harmless(value);
    if (name == "player") header.player = harmless(value);
    if (name == "pitches") {
        valid = value.find('/') == std::string_view::npos;
        header.pitches = harmless(value);
    }
    if (name == "seed") valid = readNumber(value, header.seed);
    if (name == "goal") {
        valid = readNumber(takeWord(value), header.goalFrames.emplace());
    } else if (name == "level") {
        const std::size_t gap = std::min(value.rfind(' '), value.size());
        header.level = harmless(value.substr(0, gap));
        valid =
            gap < value.size() && readNumber(value.substr(gap + 1), header.levelHash.emplace(), 16);
    }
    if (!valid) failure = quoted(line) + " is not valid";
    return valid;
}

bool InputScript::readLine(std::string_view line, std::string& failure) {
    line = line.substr(0, line.find('#'));
    const std::string_view number = takeWord(line);
    if (number.empty()) return true;

    std::uint32_t frame = 0;
    if (!readNumber(number, frame)) {
        failure = quoted(number) + " is not a frame number";
        return false;
    }
    if (frame > mostFrames) {
        failure = "a run has at most " + std::to_string(mostFrames) + " frames";
        return false;
    }
    if (ended || (!lines.empty() && frame <= lines.back().frame)) {
        failure = "frame " + std::to_string(frame) + " does not come after the one before";
        return false;
    }
    Line read{frame, 0};
    for (std::string_view word = takeWord(line); !word.empty(); word = takeWord(line)) {
        const auto* name = std::find(keyNames, keyNames + keyCount, word);
        if (word == "end") {
            ended = true;
            end = frame;
        } else if (name != keyNames + keyCount) {
            read.keys |= static_cast<std::uint8_t>(1 << (name - keyNames));
        } else {
            failure = quoted(word) + " is not a key";
            return false;
        }
    }
    lines.push_back(read);
    return true;
}

std::vector<InputScript::Press> InputScript::pressesBefore(std::uint32_t frame) const {
    const auto found = std::lower_bound(
        lines.begin(), lines.end(), frame,
        [](const Line& line, std::uint32_t wanted) { return line.frame < wanted; });
    std::vector<Press> presses;
    if (found == lines.end() || found->frame != frame) return presses;
    const int before = found == lines.begin() ? 0 : (found - 1)->keys;
    const auto has = [](int keys, int key) { return (keys >> key & 1) != 0; };
    for (int key = 0; isDirection(key); ++key) {
        if (has(before, key) && !has(found->keys, key)) {
            presses.push_back({static_cast<Key>(key), false});
        }
    }
    for (int key = 0; key < keyCount; ++key) {
        const bool pressed = has(found->keys, key);
        if (pressed && (!isDirection(key) || !has(before, key))) {
            presses.push_back({static_cast<Key>(key), true});
        }
        if (pressed && !isDirection(key)) presses.push_back({static_cast<Key>(key), false});
    }
    return presses;
}
