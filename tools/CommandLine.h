// SPDX-License-Identifier: Zlib
#pragma once

#include <charconv>
#include <cstddef>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

// The arguments of a command line: the plain words in order, and the options, which start with two
// dashes and may have a value.
class CommandLine {
public:
    // The command line is wrong; what() says why.
    struct Error : std::runtime_error {
        using runtime_error::runtime_error;
    };

    // Each option with its number of values, 0 or 1.
    using KnownOptions = std::map<std::string, std::size_t>;

    CommandLine(const std::vector<std::string>& arguments, const KnownOptions& known);

    // Whether the first word is this name. If it is, throws Error unless there are `wordCount`
    // words in all and no options other than `itsOptions`. Throws Error if there is no word.
    bool isCommand(const std::string& name, std::size_t wordCount,
                   const std::vector<std::string>& itsOptions) const {
        return isCommand(name, wordCount, wordCount, itsOptions);
    }
    bool isCommand(const std::string& name, std::size_t fewestWords, std::size_t mostWords,
                   const std::vector<std::string>& itsOptions) const;

    std::size_t getWordCount() const { return words.size(); }
    const std::string& getWord(std::size_t index) const { return words.at(index); }
    const std::string& getLastWord() const { return words.back(); }

    bool has(const std::string& option) const { return options.count(option) > 0; }

    // Whether this option is given. If it is, throws Error if there is anything else.
    bool isAlone(const std::string& option) const {
        if (!has(option)) return false;
        if (options.size() == 1 && words.empty()) return true;
        throw Error(option + " takes no other arguments");
    }

    // The value of an option, or the other text if it is not given.
    std::string get(const std::string& option, const std::string& otherwise) const {
        return has(option) ? options.at(option) : otherwise;
    }

    // The whole text as a number from least to most. Otherwise throws Error, in which `what` names
    // it.
    template <typename Number>
    static Number readNumber(const std::string& what, const std::string& text, Number least,
                             Number most) {
        Number number = 0;
        const char* const end = text.data() + text.size();
        const auto [stop, problem] = std::from_chars(text.data(), end, number);
        const bool fits = number >= least && number <= most; // false for NaN
        if (problem != std::errc() || stop != end || !fits) {
            throw Error(what + " cannot be \"" + text + "\"");
        }
        return number;
    }

private:
    std::vector<std::string> words;
    std::map<std::string, std::string> options;
};

// The version of the game and its companion programs.
const char* programVersion();

// The main function of a companion program. Prints the usage for --help, and the version for
// --version. If the work throws, it prints one line to standard error, and after it the usage if
// the command line was wrong. Returns the work's exit status, 2 for a wrong command line, or else
// `failed`.
int runProgram(int argc, char* argv[], const std::string& name, const std::string& usage,
               const CommandLine::KnownOptions& known, int failed,
               const std::function<int(const CommandLine&)>& work);
