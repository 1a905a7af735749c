// SPDX-License-Identifier: Zlib
#include <SDL.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "app/Application.h"
#include "platform/Platform.h"

// On platforms whose SDL has its own entry function, SDL.h renames this one.
int main(int argc, char* argv[]) {
    Platform::returnFreedMemory();
    Platform::openStandardStreams();
    Platform::takeEndSignals();
    // A start-up that fails halfway leaves SDL initialised.
    std::atexit(SDL_Quit);
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    try {
        Application application(arguments);
        // If the X server goes away, Xlib calls exit. A sound server that does not answer could
        // block that forever.
        std::atexit(Platform::endSoon);
        application.run();
        Platform::endSoon();
    } catch (const FatalError& error) {
        std::cout << error.text << std::endl;
    } catch (const std::exception& error) { // out of memory or threads
        std::cout << error.what() << std::endl;
        return EXIT_FAILURE;
    }
    return 0;
}
