// SPDX-License-Identifier: Zlib
#include "tools/replay/FilmFile.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <map>
#include <stdexcept>

using Arguments = std::vector<std::string>;

// The arguments of ffmpeg for each ending. The pictures arrive upside down.
static const std::map<std::string, Arguments> formats = {
    {".mp4",
     {"-vf", "vflip", "-c:v", "libx264", "-preset", "veryfast", "-crf", "20", "-pix_fmt", "yuv420p",
      "-c:a", "aac", "-b:a", "160k", "-movflags", "+faststart"}},
    {".webm",
     {"-vf", "vflip", "-c:v", "libvpx-vp9", "-deadline", "realtime", "-cpu-used", "8", "-row-mt",
      "1", "-crf", "30", "-b:v", "0", "-pix_fmt", "yuv420p", "-c:a", "libopus"}},
    {".gif",
     {"-vf", "vflip,fps=25,split[a][b];[a]palettegen=stats_mode=single[p];[b][p]paletteuse=new=1"}},
};

static std::string endingOf(const std::string& path) {
    return std::filesystem::path(path).extension();
}

bool FilmFile::knows(const std::string& path) {
    return formats.count(endingOf(path)) > 0;
}

FilmFile::FilmFile(const std::string& target, int width, int height)
    : path(target), silent(endingOf(target) == ".gif") {
    if (std::filesystem::exists(path)) throw std::runtime_error(path + " exists already");
    Arguments arguments = {
        "ffmpeg", "-loglevel", "error",
        "-f",     "rawvideo",  "-pix_fmt",
        "bgr0",   "-s",        std::to_string(width) + "x" + std::to_string(height),
        "-r",     "200/3",     "-i",
        "pipe:0"};
    if (!silent) {
        const Arguments input = {"-probesize", "32",  "-f", "f32le", "-ar",
                                 "44100",      "-ac", "2",  "-i",    "pipe:3"};
        arguments.insert(arguments.end(), input.begin(), input.end());
    }
    const Arguments& format = formats.at(endingOf(path));
    arguments.insert(arguments.end(), format.begin(), format.end());
    arguments.push_back("file:" + path);
    std::signal(SIGPIPE, SIG_IGN); // writing to an ffmpeg that has ended fails instead
    start(arguments);
    if (!silent) writer = std::thread([this] { writeSound(); });
}

void FilmFile::start(const Arguments& arguments) {
    int picturePipe[2], soundPipe[2];
    if (pipe2(picturePipe, O_CLOEXEC) != 0 || pipe2(soundPipe, O_CLOEXEC) != 0) {
        throw std::runtime_error(std::string("cannot make a pipe: ") + std::strerror(errno));
    }
    pictures = picturePipe[1];
    sound = soundPipe[1];
    std::vector<char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, picturePipe[0], 0);
    posix_spawn_file_actions_adddup2(&actions, soundPipe[0], 3);
    const int problem =
        posix_spawnp(&process, "ffmpeg", &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(picturePipe[0]);
    close(soundPipe[0]);
    if (problem == 0) return;
    process = -1;
    close(pictures);
    close(sound);
    throw std::runtime_error(
        "cannot start ffmpeg; install the package \"ffmpeg\", or write pictures with --frames");
}

FilmFile::~FilmFile() {
    if (process < 0) return;
    kill(process, SIGTERM);
    endProcess();
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}

static bool writeAll(int descriptor, const void* data, std::size_t bytes) {
    const char* next = static_cast<const char*>(data);
    while (bytes > 0) {
        const ssize_t count = write(descriptor, next, bytes);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        next += count;
        bytes -= static_cast<std::size_t>(count);
    }
    return true;
}

void FilmFile::writeSound() {
    for (;;) {
        std::vector<float> samples;
        {
            std::unique_lock lock(mutex);
            changed.wait(lock, [this] { return ended || !waiting.empty(); });
            if (waiting.empty()) return;
            samples = std::move(waiting.front());
            waiting.pop_front();
        }
        if (!writeAll(sound, samples.data(), samples.size() * sizeof samples[0])) return;
    }
}

void FilmFile::addFrame(const std::vector<unsigned char>& pixels,
                        const std::vector<float>& samples) {
    if (!silent) {
        const std::lock_guard lock(mutex);
        waiting.push_back(samples);
        changed.notify_one();
    }
    if (writeAll(pictures, pixels.data(), pixels.size())) return;
    throw std::runtime_error("ffmpeg ended before the film was finished");
}

// Closes the pipes and waits for ffmpeg. Returns whether it succeeded.
bool FilmFile::endProcess() {
    close(pictures);
    {
        const std::lock_guard lock(mutex);
        ended = true;
        changed.notify_one();
    }
    if (writer.joinable()) writer.join();
    close(sound);
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {}
    process = -1;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

void FilmFile::finish() {
    if (endProcess()) return;
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    throw std::runtime_error("ffmpeg failed");
}
