// SPDX-License-Identifier: Zlib
#pragma once

#include <stdexcept>
#include <string>

#include "drawing/LoadedImage.h"

// The picture of a level, read as the game reads it.
class LevelFile {
public:
    // It is no picture at all; what() says why.
    struct Unreadable : std::runtime_error {
        using runtime_error::runtime_error;
    };

    explicit LevelFile(const std::string& path);

    // Why the game cannot use the picture, or it is beyond all checks; empty if all is well.
    const std::string& getFault() const { return fault; }

    const LoadedImage& getPicture() const { return picture; }

private:
    LoadedImage picture;
    std::string fault;
};
