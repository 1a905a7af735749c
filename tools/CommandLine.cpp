// SPDX-License-Identifier: Zlib
#include "tools/CommandLine.h"

#include <algorithm>

CommandLine::CommandLine(const std::vector<std::string>& arguments, const KnownOptions& known) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word.rfind("--", 0) != 0) {
            words.push_back(word);
            continue;
        }
        const auto option = known.find(word);
        if (option == known.end()) throw Error("unknown option " + word);
        if (i + option->second >= arguments.size()) throw Error(word + " needs a value");
        options[word] = option->second > 0 ? arguments[++i] : "";
    }
    if (words.empty()) throw Error("no command");
}

bool CommandLine::isCommand(const std::string& name, std::size_t wordCount,
                            const std::vector<std::string>& itsOptions) const {
    if (words[0] != name) return false;
    if (words.size() != wordCount) {
        throw Error(name + " has " + std::to_string(wordCount - 1) + " words behind it, not " +
                    std::to_string(words.size() - 1));
    }
    for (const auto& [option, value] : options) {
        if (std::find(itsOptions.begin(), itsOptions.end(), option) == itsOptions.end()) {
            throw Error(option + " means nothing to " + name);
        }
    }
    return true;
}
