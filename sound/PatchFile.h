// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

// A file with the values of a voice's parameters. Lines count from 1 and end at a line feed:
//   1 to 22   anything
//   23        from column 26 on the number of parameters; the last character is dropped
//   24, 25    anything
//   26 on     a value each, in the order of the parameters; the last two characters are dropped
//   "}"       at the start of a line ends the values
// It is read once, by the constructor.
class PatchFile {
public:
    struct Value {
        std::int32_t index; // of the parameter
        float number;
    };

    // A file that cannot be read to line 23, or has another number of parameters there, prints a
    // line and has no values. A value line without a number is skipped.
    PatchFile(const std::string& path, std::int32_t parameterCount);

    const std::vector<Value>& getValues() const { return values; }

private:
    static std::int32_t readCount(std::istream& file);
    void readValues(std::istream& file);

    std::vector<Value> values;
};
