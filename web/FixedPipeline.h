// SPDX-License-Identifier: Zlib
#pragma once

// Draws what is collected. Called by the window before it shows a frame.
void flushPicture();
