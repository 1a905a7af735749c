// SPDX-License-Identifier: Zlib
#include "platform/Platform.h"

bool Platform::hasDisplay() {
    return true;
}

// For a command without a size; the page always gives one to a play.
Platform::ScreenSize Platform::primaryScreenSize() {
    return {1280, 720};
}
