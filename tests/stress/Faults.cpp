// SPDX-License-Identifier: Zlib
#include "tests/stress/Faults.h"

#include <SDL.h>
#include <SDL_image.h>
#include <SDL_ttf.h>
#include <dlfcn.h>
#include <portaudio.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

extern "C" {
#define FALLIBLE(Result, name, failure, parameters, arguments)                                     \
    Result __real_##name parameters;                                                               \
    Result __wrap_##name parameters {                                                              \
        return Faults::isNext() ? failure : __real_##name arguments;                               \
    }

FALLIBLE(int, SDL_Init, -1, (Uint32 flags), (flags))
FALLIBLE(SDL_Surface*, SDL_CreateRGBSurfaceFrom, nullptr,
         (void* pixels, int w, int h, int depth, int pitch, Uint32 r, Uint32 g, Uint32 b, Uint32 a),
         (pixels, w, h, depth, pitch, r, g, b, a))
FALLIBLE(int, SDL_LockSurface, -1, (SDL_Surface * surface), (surface))
FALLIBLE(SDL_RWops*, SDL_RWFromFile, nullptr, (const char* path, const char* mode), (path, mode))
FALLIBLE(SDL_RWops*, SDL_RWFromConstMem, nullptr, (const void* bytes, int size), (bytes, size))
FALLIBLE(SDL_Surface*, IMG_LoadPNG_RW, nullptr, (SDL_RWops * source), (source))
FALLIBLE(SDL_Surface*, IMG_LoadJPG_RW, nullptr, (SDL_RWops * source), (source))
FALLIBLE(int, TTF_Init, -1, (), ())
FALLIBLE(TTF_Font*, TTF_OpenFont, nullptr, (const char* path, int size), (path, size))
FALLIBLE(int, TTF_GlyphMetrics, -1,
         (TTF_Font * font, Uint16 code, int* minX, int* maxX, int* minY, int* maxY, int* advance),
         (font, code, minX, maxX, minY, maxY, advance))
FALLIBLE(SDL_Surface*, TTF_RenderGlyph_Blended, nullptr,
         (TTF_Font * font, Uint16 code, SDL_Color colour), (font, code, colour))
FALLIBLE(PaError, Pa_Initialize, paInternalError, (), ())
FALLIBLE(PaError, Pa_Terminate, paInternalError, (), ())
FALLIBLE(const PaHostApiInfo*, Pa_GetHostApiInfo, nullptr, (PaHostApiIndex api), (api))
FALLIBLE(PaError, Pa_IsFormatSupported, paInvalidSampleRate,
         (const PaStreamParameters* input, const PaStreamParameters* output, double rate),
         (input, output, rate))
FALLIBLE(PaError, Pa_OpenStream, paInternalError,
         (PaStream * *stream, const PaStreamParameters* input, const PaStreamParameters* output,
          double rate, unsigned long frames, PaStreamFlags flags, PaStreamCallback* callback,
          void* data),
         (stream, input, output, rate, frames, flags, callback, data))
FALLIBLE(PaError, Pa_StartStream, paInternalError, (PaStream * stream), (stream))
FALLIBLE(PaError, Pa_StopStream, paInternalError, (PaStream * stream), (stream))
FALLIBLE(PaError, Pa_CloseStream, paInternalError, (PaStream * stream), (stream))

// The C++ library calls these; its calls are not redirected, but find these definitions first.
#define FALLIBLE_FILE(Result, name, failure, parameters, arguments)                                \
    Result name parameters {                                                                       \
        static const auto real = reinterpret_cast<Result(*) parameters>(dlsym(RTLD_NEXT, #name));  \
        if (!Faults::isNext()) return real arguments;                                              \
        errno = EIO;                                                                               \
        return failure;                                                                            \
    }

FALLIBLE_FILE(FILE*, fopen64, nullptr, (const char* path, const char* mode), (path, mode))
FALLIBLE_FILE(ssize_t, read, -1, (int file, void* bytes, std::size_t size), (file, bytes, size))
FALLIBLE_FILE(ssize_t, write, -1, (int file, const void* bytes, std::size_t size),
              (file, bytes, size))
FALLIBLE_FILE(ssize_t, writev, -1, (int file, const iovec* parts, int count), (file, parts, count))
FALLIBLE_FILE(int, mkdir, -1, (const char* path, mode_t mode), (path, mode))
}
