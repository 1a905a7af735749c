// SPDX-License-Identifier: Zlib
#include "tools/replay/InputScript.h"

#include <algorithm>
#include <sstream>

static const std::string keyNames[InputScript::keyCount] = {"up",   "left",   "right",
                                                            "down", "action", "escape"};

static bool isDirection(int key) {
    return key < InputScript::action;
}

bool InputScript::read(std::istream& source, std::string& failure) {
    bool held[keyCount] = {};
    std::string line;
    for (int number = 1; std::getline(source, line); ++number) {
        if (!readLine(line.substr(0, line.find('#')), held, failure)) {
            failure = "line " + std::to_string(number) + ": " + failure;
            return false;
        }
    }
    if (!ended) failure = "the last line is not \"end\"";
    return ended;
}

bool InputScript::readLine(const std::string& line, bool held[keyCount], std::string& failure) {
    std::istringstream words(line);
    std::string word;
    if (!(words >> word)) return true; // an empty line

    std::uint32_t frame = 0;
    std::istringstream number(word);
    if (word[0] == '-' || !(number >> frame) || !number.eof()) {
        failure = "\"" + word + "\" is not a frame number";
        return false;
    }
    if (ended || (!presses.empty() && frame <= presses.rbegin()->first)) {
        failure = "frame " + word + " is not after the one before";
        return false;
    }
    bool named[keyCount] = {};
    while (words >> word) {
        const auto* name = std::find(keyNames, keyNames + keyCount, word);
        if (word == "end") {
            ended = true;
            end = frame;
        } else if (name != keyNames + keyCount) {
            named[name - keyNames] = true;
        } else {
            failure = "\"" + word + "\" is not a key";
            return false;
        }
    }
    std::vector<Press>& before = presses[frame];
    for (int key = 0; isDirection(key); ++key) {
        if (held[key] && !named[key]) before.push_back({static_cast<Key>(key), false});
    }
    for (int key = 0; key < keyCount; ++key) {
        if (named[key] && !held[key]) before.push_back({static_cast<Key>(key), true});
        if (named[key] && !isDirection(key)) before.push_back({static_cast<Key>(key), false});
        held[key] = named[key] && isDirection(key);
    }
    return true;
}

std::vector<InputScript::Press> InputScript::pressesBefore(std::uint32_t frame) const {
    const auto found = presses.find(frame);
    return found == presses.end() ? std::vector<Press>() : found->second;
}
