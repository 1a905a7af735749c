// SPDX-License-Identifier: Zlib
// What the tools write beside runs. Pictures and sound are the same as elsewhere. The calls that
// begin a link or a film fail: the page makes links itself.
#include <png.h>
#include <sndfile.h>
#include <spawn.h>
#include <zlib.h>

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>

#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

// --- pictures

int png_image_write_to_file(png_imagep image, const char* path, int /*to8Bits*/, const void* pixels,
                            png_int_32 rowBytes, const void* /*colours*/) {
    const auto* first = static_cast<const unsigned char*>(pixels);
    const auto width = static_cast<int>(image->width);
    const auto height = static_cast<int>(image->height);
    if (rowBytes < 0) first -= rowBytes * (height - 1);
    return stbi_write_png(path, width, height, 3, first, rowBytes);
}

// --- sound: WAV files of 16 bits

struct sf_private_tag {
    std::FILE* file;
    std::uint32_t bytes = 0; // of samples
};

static void writeNumber(std::FILE* file, std::uint32_t number, int bytes) {
    for (int i = 0; i < bytes; ++i) std::fputc(static_cast<int>(number >> 8 * i & 0xFF), file);
}

static void writeHead(const SNDFILE& sound) {
    constexpr std::uint32_t rate = 44100;
    std::rewind(sound.file);
    std::fputs("RIFF", sound.file);
    writeNumber(sound.file, 36 + sound.bytes, 4);
    std::fputs("WAVEfmt ", sound.file);
    writeNumber(sound.file, 16, 4);
    writeNumber(sound.file, 1, 2); // whole numbers
    writeNumber(sound.file, 2, 2);
    writeNumber(sound.file, rate, 4);
    writeNumber(sound.file, rate * 4, 4);
    writeNumber(sound.file, 4, 2);
    writeNumber(sound.file, 16, 2);
    std::fputs("data", sound.file);
    writeNumber(sound.file, sound.bytes, 4);
}

SNDFILE* sf_open(const char* path, int /*mode*/, SF_INFO* info) {
    std::FILE* file = (info->format & SF_FORMAT_PCM_16) ? std::fopen(path, "wb") : nullptr;
    if (!file) return nullptr;
    auto* sound = new SNDFILE{file};
    writeHead(*sound);
    return sound;
}

sf_count_t sf_writef_float(SNDFILE* sound, const float* samples, sf_count_t frames) {
    for (sf_count_t i = 0; i < 2 * frames; ++i) {
        constexpr float most = 2147483648.0f;
        const float scaled = samples[i] * most;
        long value = scaled >= most ? 0x7FFFFFFF : -0x7FFFFFFF - 1;
        if (scaled >= -most && scaled < most) value = std::lrint(scaled);
        writeNumber(sound->file, static_cast<std::uint32_t>(value) >> 16, 2);
        sound->bytes += 2;
    }
    return frames;
}

int sf_close(SNDFILE* sound) {
    writeHead(*sound);
    const int problem = std::ferror(sound->file) | std::fclose(sound->file);
    delete sound;
    return problem;
}

const char* sf_strerror(SNDFILE* /*sound*/) {
    return "the page cannot write such a file";
}

const char* sf_error_number(int /*number*/) {
    return sf_strerror(nullptr);
}

int sf_command(SNDFILE* /*sound*/, int /*command*/, void* /*data*/, int /*bytes*/) {
    return 0;
}

// --- links and films

int deflateInit2_(z_streamp /*stream*/, int /*level*/, int /*method*/, int /*window*/,
                  int /*memory*/, int /*strategy*/, const char* /*version*/, int /*bytes*/) {
    return Z_MEM_ERROR;
}

int deflate(z_streamp /*stream*/, int /*flush*/) {
    return Z_STREAM_ERROR;
}

int deflateEnd(z_streamp /*stream*/) {
    return Z_OK;
}

int inflateInit2_(z_streamp /*stream*/, int /*window*/, const char* /*version*/, int /*bytes*/) {
    return Z_MEM_ERROR;
}

int inflate(z_streamp /*stream*/, int /*flush*/) {
    return Z_STREAM_ERROR;
}

int inflateEnd(z_streamp /*stream*/) {
    return Z_OK;
}

int posix_spawnp(pid_t* /*process*/, const char* /*program*/,
                 const posix_spawn_file_actions_t* /*actions*/,
                 const posix_spawnattr_t* /*attributes*/, char* const* /*arguments*/,
                 char* const* /*environment*/) {
    return ENOSYS;
}
