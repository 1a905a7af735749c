// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The few services of the operating system that the game needs. There is one header and one
// source file a platform, chosen by the build. No operation throws or prints; each may be called
// from any thread, but openStandardStreams, takeEndSignals, setEnvironment and QuietStandardError,
// which change the whole process, only before a second thread of the game runs.
class Platform {
public:
    // special: a pipe or a device, of which reading may never come to an end.
    enum class PathKind { missing, unreachable, file, directory, special };

    struct PathStatus {
        PathKind kind = PathKind::missing; // unreachable: the query failed for another reason
        std::string failure;               // the system's text for the reason, empty on success
    };

    // Full path of the running executable with links resolved, empty if the system gives none.
    static std::string executablePath();

    // What lies at the path; links are followed.
    static PathStatus pathStatus(const std::string& path);

    // Names in the directory without "." and "..", in the file system's order; nothing if the
    // listing cannot start.
    static std::optional<std::vector<std::string>> listDirectory(const std::string& path);

    // The folder in which programs keep the user's settings: $XDG_CONFIG_HOME if that is an
    // absolute path, else .config in the user's home; empty if there is no home.
    static std::string applicationDataFolder();

    // Makes a folder, and folders above it that are missing, for the user alone. False if the
    // system refuses.
    static bool makeFolder(const std::string& path);

    // Whether a screen answers.
    static bool hasDisplay();

    struct ScreenSize {
        int width = 1024; // pixels; these two where there is no screen
        int height = 768;
    };
    // Of the primary screen.
    static ScreenSize primaryScreenSize();

    // Seconds of calendar time since 1970.
    static std::int64_t calendarSeconds();

    // Value of an environment variable, empty if it is unset or empty.
    static std::string environment(const std::string& name);

    // Sets an environment variable for this process and its libraries.
    static void setEnvironment(const std::string& name, const std::string& value);

    // Opens what is closed of standard input, output and error, with nothing behind it. Otherwise
    // the next thing that is opened, the way to the screen perhaps, would get what is printed.
    static void openStandardStreams();

    // From now on a hang-up, an interrupt and a request to terminate no longer end the process:
    // isEndRequested then returns true, and endSoon was called. A signal that is ignored stays so.
    // A closed pipe, or a file as long as it may be, no longer ends the process: the write fails.
    static void takeEndSignals();
    static bool isEndRequested();

    // Ends the process with status 1 in 2 seconds, unless it ends by itself before. The window or
    // the sound may belong to a server that no longer answers. Later calls change nothing. May be
    // called from a signal handler.
    static void endSoon();

    // While it lives, what anybody in this process writes to standard error goes nowhere; then
    // standard error is again what it was. If the system cannot turn it away it stays as it is.
    class QuietStandardError {
    public:
        QuietStandardError();
        QuietStandardError(const QuietStandardError&) = delete;
        QuietStandardError& operator=(const QuietStandardError&) = delete;
        ~QuietStandardError();

    private:
        int kept = -1; // a second descriptor of what standard error was; -1: not turned away
    };
};
