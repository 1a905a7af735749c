// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

// A file with the values of a voice's parameters. Lines count from 1, columns from 0; a line ends
// at a line feed:
//   1 to 22   ignored
//   23        the number of parameters, from column 26; the last character is dropped
//   24, 25    ignored
//   26 on     one value a line, in the order of the parameters; the last two characters are dropped
//   "}"       at the start of a line ends the values
// Only the first 64 KiB count. The constructor reads the file.
class PatchFile {
public:
    struct Value {
        std::int32_t index; // of the parameter
        float number;
    };

    // If the file cannot be read, or line 23 has another number, prints a line and leaves no
    // values. A value line without a finite number is skipped but counted.
    PatchFile(const std::string& path, std::int32_t parameterCount);

    const std::vector<Value>& getValues() const { return values; }

private:
    static std::int32_t readCount(std::istream& file);
    void readValues(std::istream& file);

    std::vector<Value> values; // at most 1000
};
