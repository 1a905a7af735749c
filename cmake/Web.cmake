# SPDX-License-Identifier: Zlib
# Builds for browsers with Debian's Emscripten. Its linker needs NODE_PATH to find its modules; the
# preset sets it.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)
# The fetch function of newer versions of Node.js cannot read files on disk. Without it,
# Emscripten's programs read them in another way.
set(CMAKE_CROSSCOMPILING_EMULATOR node;--no-experimental-fetch)
