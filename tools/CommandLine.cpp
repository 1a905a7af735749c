// SPDX-License-Identifier: Zlib
#include "tools/CommandLine.h"

#include <algorithm>
#include <iostream>
#include <new>

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
}

bool CommandLine::isCommand(const std::string& name, std::size_t fewestWords, std::size_t mostWords,
                            const std::vector<std::string>& itsOptions) const {
    if (words.empty()) throw Error("no command");
    if (words[0] != name) return false;
    if (words.size() < fewestWords || words.size() > mostWords) {
        const bool tooFew = words.size() < fewestWords;
        std::string count = std::to_string((tooFew ? fewestWords : mostWords) - 1);
        if (fewestWords < mostWords) count.insert(0, tooFew ? "at least " : "at most ");
        const std::string noun = count == "1" || count.ends_with(" 1") ? " argument" : " arguments";
        throw Error(name + " takes " + count + noun + ", got " + std::to_string(words.size() - 1));
    }
    for (const auto& [option, value] : options) {
        if (std::find(itsOptions.begin(), itsOptions.end(), option) == itsOptions.end()) {
            throw Error(name + " has no option " + option);
        }
    }
    return true;
}

const char* programVersion() {
    return TARNWICK_VERSION;
}

int runProgram(int argc, char* argv[], const std::string& name, const std::string& usage,
               const CommandLine::KnownOptions& known, int failed,
               const std::function<int(const CommandLine&)>& work) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments == std::vector<std::string>{"--help"}) {
        std::cout << usage;
        return 0;
    }
    if (arguments == std::vector<std::string>{"--version"}) {
        std::cout << name << " " << programVersion() << "\n";
        return 0;
    }
    try {
        return work(CommandLine(arguments, known));
    } catch (const CommandLine::Error& error) {
        std::cerr << name << ": " << error.what() << "\n" << usage;
        return 2;
    } catch (const std::runtime_error& error) {
        std::cerr << name << ": " << error.what() << std::endl;
    } catch (const std::bad_alloc&) {
        std::cerr << name << ": out of memory" << std::endl;
    }
    return failed;
}
