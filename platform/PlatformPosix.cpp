// SPDX-License-Identifier: Zlib
#include "platform/Platform.h"

#include <dirent.h>
#include <fcntl.h>
#include <malloc.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>

std::string Platform::executablePath() {
    // readlink truncates silently, so the buffer grows until the answer leaves room in it.
    for (std::string buffer(256, '\0');; buffer.resize(buffer.size() * 2)) {
        const ssize_t length = readlink("/proc/self/exe", buffer.data(), buffer.size());
        if (length < 0) return "";
        if (static_cast<std::size_t>(length) < buffer.size()) {
            buffer.resize(static_cast<std::size_t>(length));
            return buffer;
        }
    }
}

Platform::PathStatus Platform::pathStatus(const std::string& path) {
    struct stat status = {};
    if (stat(path.c_str(), &status) == 0) {
        if (S_ISDIR(status.st_mode)) return {PathKind::directory, ""};
        return {S_ISREG(status.st_mode) ? PathKind::file : PathKind::special, ""};
    }
    const int reason = errno;
    const bool missing = reason == ENOENT || reason == ENOTDIR;
    return {missing ? PathKind::missing : PathKind::unreachable, std::strerror(reason)};
}

std::optional<std::vector<std::string>> Platform::listDirectory(const std::string& path) {
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(path.c_str()), closedir);
    if (!directory) return std::nullopt;
    std::vector<std::string> names;
    while (const dirent* entry = readdir(directory.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") names.push_back(name);
    }
    return names;
}

// The home in the user's password entry, empty if there is none.
static std::string homeOfUser() {
    constexpr std::size_t mostBytes = 1 << 20;
    passwd entry = {};
    passwd* found = nullptr;
    for (std::vector<char> texts(1024); texts.size() <= mostBytes; texts.resize(texts.size() * 2)) {
        const int failure = getpwuid_r(getuid(), &entry, texts.data(), texts.size(), &found);
        if (failure == ERANGE) continue;
        return found && entry.pw_dir ? entry.pw_dir : "";
    }
    return "";
}

std::string Platform::applicationDataFolder() {
    const std::string configured = environment("XDG_CONFIG_HOME");
    if (configured.starts_with('/')) return configured;
    std::string home = environment("HOME");
    if (home.empty()) home = homeOfUser();
    return home.empty() ? "" : home + "/.config";
}

bool Platform::makeFolder(const std::string& path) {
    constexpr mode_t forTheUser = 0700;
    for (std::size_t end = path.find('/', 1); end != std::string::npos;
         end = path.find('/', end + 1)) {
        mkdir(path.substr(0, end).c_str(), forTheUser); // most of them exist
    }
    return mkdir(path.c_str(), forTheUser) == 0;
}

std::int64_t Platform::calendarSeconds() {
    return std::time(nullptr);
}

std::string Platform::environment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value ? value : "";
}

void Platform::setEnvironment(const std::string& name, const std::string& value) {
    setenv(name.c_str(), value.c_str(), 1);
}

void Platform::returnFreedMemory() {
#ifdef __GLIBC__
    // By default the first threshold grows whenever a large block is freed; once set, it stays. The
    // second must exceed what a frame frees, or each frame would shrink the heap and enlarge it
    // again.
    constexpr int largeBlock = 1 << 20; // bytes
    mallopt(M_MMAP_THRESHOLD, largeBlock);
    mallopt(M_TRIM_THRESHOLD, largeBlock);
#endif
}

void Platform::openStandardStreams() {
    int opened = -1; // each call returns the lowest free descriptor
    do {
        opened = open("/dev/null", O_RDWR);
    } while (opened >= 0 && opened <= STDERR_FILENO);
    if (opened >= 0) close(opened);
}

static constexpr unsigned longestEnd = 2; // seconds

static std::atomic<bool> endRequested = false;
static std::atomic<bool> isEnding = false;
static_assert(std::atomic<bool>::is_always_lock_free); // for the signal handlers

static void handle(int signal, void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
}

void Platform::takeEndSignals() {
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction present = {};
        sigaction(signal, nullptr, &present);
        if (present.sa_handler == SIG_IGN) continue;
        handle(signal, [](int) {
            endRequested = true;
            endSoon();
        });
    }
    handle(SIGPIPE, SIG_IGN);
    handle(SIGXFSZ, SIG_IGN);
}

bool Platform::isEndRequested() {
    return endRequested;
}

void Platform::endSoon() {
    if (isEnding.exchange(true)) return;
    handle(SIGALRM, [](int) { _exit(EXIT_FAILURE); });
    alarm(longestEnd);
}

Platform::QuietStandardError::QuietStandardError() {
    const int copy = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (copy < 0) return;
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere >= 0 && dup2(nowhere, STDERR_FILENO) >= 0) {
        kept = copy;
    } else {
        close(copy);
    }
    if (nowhere >= 0) close(nowhere);
}

Platform::QuietStandardError::~QuietStandardError() {
    if (kept < 0) return;
    while (dup2(kept, STDERR_FILENO) < 0 && (errno == EINTR || errno == EBUSY)) {}
    close(kept);
}
