// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The few services of the operating system that the game needs. There is one header; the build
// chooses the sources. Those about the screen are a target of their own, platform_screen. No
// operation throws or prints. Call returnFreedMemory, openStandardStreams, takeEndSignals,
// setEnvironment and QuietStandardError only before the game starts a second thread, since they
// change the whole process; call the others from any thread.
class Platform {
public:
    // special: a pipe or a device, where reading may never end.
    enum class PathKind { missing, unreachable, file, directory, special };

    struct PathStatus {
        PathKind kind = PathKind::missing; // unreachable: the query failed for another reason
        std::string failure;               // the system's error message, empty on success
    };

    // The full path of the running executable with links resolved; empty if unknown.
    static std::string executablePath();

    // What is at the path; follows links.
    static PathStatus pathStatus(const std::string& path);

    // The names in a directory without "." and "..", in the file system's order; nullopt if it
    // cannot be read.
    static std::optional<std::vector<std::string>> listDirectory(const std::string& path);

    // The folder for the user's settings: $XDG_CONFIG_HOME if that is an absolute path, otherwise
    // .config in the user's home; empty if there is no home.
    static std::string applicationDataFolder();

    // Makes a folder and its missing parents, accessible only to the user. Returns false if that
    // fails, or if the folder exists.
    static bool makeFolder(const std::string& path);

    // Whether there is a screen. Link platform_screen for this and the next operation.
    static bool hasDisplay();

    struct ScreenSize {
        int width = 1024; // pixels; the defaults are for no screen
        int height = 768;
    };
    // The size of the primary screen.
    static ScreenSize primaryScreenSize();

    // Seconds of calendar time since 1970.
    static std::int64_t calendarSeconds();

    // The value of an environment variable, empty if it is unset.
    static std::string environment(const std::string& name);

    // Sets an environment variable for this process and its libraries.
    static void setEnvironment(const std::string& name, const std::string& value);

    // Makes the heap return every large block to the system as soon as it is freed. Otherwise the
    // pictures freed at the start leave gaps that are never filled.
    static void returnFreedMemory();

    // Reopens closed standard streams on the null device, so that a later descriptor (the X
    // connection) does not receive our output.
    static void openStandardStreams();

    // From now on a hang-up, an interrupt or a request to terminate no longer ends the process but
    // calls endSoon and makes isEndRequested return true. Those that are ignored already stay so. A
    // write to a closed pipe, or beyond the limit on file sizes, fails instead of ending the
    // process.
    static void takeEndSignals();
    static bool isEndRequested();

    // Ends the process with status 1 in 2 seconds, unless it ends by itself before then: the server
    // of the window or the sound may no longer answer. Later calls change nothing. Safe in a signal
    // handler.
    static void endSoon();

    // Discards everything that this process writes to standard error while the object exists. If
    // the system cannot redirect standard error, nothing changes.
    class QuietStandardError {
    public:
        QuietStandardError();
        QuietStandardError(const QuietStandardError&) = delete;
        QuietStandardError& operator=(const QuietStandardError&) = delete;
        ~QuietStandardError();

    private:
        int kept = -1; // a duplicate of the original standard error; -1 if not redirected
    };
};
