// SPDX-License-Identifier: Zlib
#include "platform/Platform.h"

bool Platform::hasDisplay() {
    return true;
}

// For a command without a size; a play always gets one from the page.
Platform::ScreenSize Platform::primaryScreenSize() {
    return {1280, 720};
}
