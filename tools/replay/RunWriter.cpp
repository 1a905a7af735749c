// SPDX-License-Identifier: Zlib
#include "tools/replay/RunWriter.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <stdexcept>

#include "platform/Platform.h"
#include "tools/replay/RunLevel.h"

static constexpr std::uint32_t longestGap = 60; // frames without a line
static constexpr unsigned directionKeys = (1u << InputScript::action) - 1;

// Makes the file if there is none.
static std::FILE* openNew(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "wxe");
    if (!file && errno == EEXIST) throw std::runtime_error(path + " exists already");
    if (!file) throw std::runtime_error("cannot write " + path + ": " + std::strerror(errno));
    return file;
}

RunWriter::RunWriter(const std::string& target, const InputScript::Header& header)
    : path(target), file(openNew(path), std::fclose) {
    std::fputs(RunLevel::headerText(header).c_str(), file.get());
    std::fflush(file.get());
}

void RunWriter::writeFrame(std::uint32_t frame, unsigned keys) {
    if (keys == lastKeys && frame - lastFrame < longestGap) return;
    std::fprintf(file.get(), "%u", frame);
    for (int key = 0; key < InputScript::keyCount; ++key) {
        if (keys >> key & 1) std::fprintf(file.get(), " %s", InputScript::nameOf(key));
    }
    std::fprintf(file.get(), "\n");
    std::fflush(file.get());
    lastFrame = frame;
    // Action is released at once, so the next frame needs no line, unless it is pressed again.
    lastKeys = keys & directionKeys;
}

void RunWriter::writeEnd(std::uint32_t frame, std::optional<std::uint32_t> goalFrames) {
    std::fprintf(file.get(), "%u end\n", frame);
    if (goalFrames) std::fprintf(file.get(), "# goal: %u frames\n", *goalFrames);
    const bool failed = std::ferror(file.get()) != 0;
    if (std::fclose(file.release()) != 0 || failed) {
        throw std::runtime_error("cannot write " + path);
    }
}

void RunWriter::remove() {
    std::remove(path.c_str());
}

std::string RunWriter::newPath() {
    const std::string data = Platform::environment("XDG_DATA_HOME");
    const std::string home = Platform::environment("HOME");
    if (home.empty() && data.empty())
        throw std::runtime_error("neither XDG_DATA_HOME nor HOME is set");
    const std::string parent = data.starts_with('/') ? data : home + "/.local/share";
    const std::string folder = parent + "/tarnwick/runs";
    if (!Platform::makeFolder(folder) && !std::filesystem::is_directory(folder)) {
        throw std::runtime_error("cannot make " + folder);
    }
    const std::time_t now = std::time(nullptr);
    char date[32];
    std::strftime(date, sizeof date, "%Y-%m-%d-%H%M%S", std::localtime(&now));
    std::string path = folder + "/" + date + ".txt";
    for (int number = 2; std::filesystem::exists(path); ++number) {
        path = folder + "/" + date + "-" + std::to_string(number) + ".txt";
    }
    return path;
}
