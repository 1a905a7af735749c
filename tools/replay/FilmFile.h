// SPDX-License-Identifier: Zlib
#pragma once

#include <sys/types.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// A film that ffmpeg makes from pictures and sound that it gets through two pipes. The sound has a
// thread of its own, since ffmpeg takes from each pipe as it needs. Used on one thread.
class FilmFile {
public:
    // Starts ffmpeg. The ending of the path is the format: mp4, webm or gif, which has no sound.
    // Sizes in pixels. Throws std::runtime_error if ffmpeg is missing or the path exists.
    FilmFile(const std::string& path, int width, int height);
    FilmFile(const FilmFile&) = delete;
    FilmFile& operator=(const FilmFile&) = delete;
    ~FilmFile(); // removes a film that is not finished

    // Whether the ending of the path is one of the three.
    static bool knows(const std::string& path);

    // A frame: 4 bytes a pixel (blue, green, red, unused), rows from the bottom, and its stereo
    // samples. Throws std::runtime_error if ffmpeg has ended.
    void addFrame(const std::vector<unsigned char>& pixels, const std::vector<float>& samples);

    // Ends the film. Throws std::runtime_error if ffmpeg failed.
    void finish();

private:
    void start(const std::vector<std::string>& arguments);
    void writeSound();
    bool endProcess();

    std::string path;
    bool silent;
    pid_t process = -1;
    int pictures = -1; // our ends of the pipes
    int sound = -1;
    std::thread writer;
    std::mutex mutex; // guards the two below
    std::deque<std::vector<float>> waiting;
    bool ended = false; // no more sound will come
    std::condition_variable changed;
};
