// SPDX-License-Identifier: Zlib
// The part of SDL that the game uses: one window, which is a canvas of the page, its keys and the
// buttons of gamepads, the clock, and files in memory. Sdl.js holds what speaks to the browser.
#include <SDL.h>
#include <emscripten.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <string>

#include "web/FixedPipeline.h"

// In Sdl.js.
extern "C" {
int openCanvas(int width, int height, int samples);
void listenToKeys();
void closeWindow();
void readGamepads();
void waitForFrame();
void waitFor(int milliseconds);
}

static constexpr int gamepadCount = 4; // as many as a browser knows

static std::deque<SDL_Event> events;
static std::string problem;
static SDL_PixelFormat screenFormat;
static SDL_VideoInfo video;
static SDL_Surface screen;
static int wantedSamples = 0;
static double startTime = 0; // ms

// --- start and end

int SDL_Init(Uint32 /*systems*/) {
    startTime = emscripten_get_now();
    screenFormat.BitsPerPixel = 32;
    video.vfmt = &screenFormat;
    listenToKeys();
    return 0;
}

void SDL_Quit() {
    closeWindow();
}

const SDL_version* SDL_Linked_Version() {
    static const SDL_version version = {SDL_MAJOR_VERSION, SDL_MINOR_VERSION, SDL_PATCHLEVEL};
    return &version;
}

void SDL_SetError(const char* text, ...) {
    problem = text;
}

char* SDL_GetError() {
    return problem.data();
}

// --- the window

const SDL_VideoInfo* SDL_GetVideoInfo() {
    return &video;
}

char* SDL_VideoDriverName(char* name, int bytes) {
    std::snprintf(name, static_cast<std::size_t>(bytes), "web");
    return name;
}

int SDL_GL_SetAttribute(SDL_GLattr attribute, int value) {
    if (attribute == SDL_GL_MULTISAMPLESAMPLES) wantedSamples = value;
    return 0;
}

SDL_Surface* SDL_SetVideoMode(int width, int height, int /*bits*/, Uint32 flags) {
    if (!openCanvas(width, height, wantedSamples)) {
        SDL_SetError("this browser has no WebGL");
        return nullptr;
    }
    screen.flags = flags;
    screen.format = &screenFormat;
    screen.w = width;
    screen.h = height;
    return &screen;
}

SDL_Surface* SDL_GetVideoSurface() {
    return &screen;
}

void SDL_GL_SwapBuffers() {
    flushPicture();
    waitForFrame();
}

int SDL_ShowCursor(int /*shown*/) {
    return 0; // the page's style hides it
}

void SDL_WM_SetCaption(const char* /*title*/, const char* /*icon*/) {}
void SDL_WM_SetIcon(SDL_Surface* /*icon*/, Uint8* /*mask*/) {}

// --- events

extern "C" {
EMSCRIPTEN_KEEPALIVE void takeKey(int symbol, bool isPressed) {
    SDL_Event event = {};
    event.type = isPressed ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.keysym.sym = static_cast<SDLKey>(symbol);
    events.push_back(event);
}

EMSCRIPTEN_KEEPALIVE void takeGamepadButton(int gamepad, int button, bool isPressed) {
    SDL_Event event = {};
    event.type = isPressed ? SDL_JOYBUTTONDOWN : SDL_JOYBUTTONUP;
    event.jbutton.which = static_cast<Uint8>(gamepad);
    event.jbutton.button = static_cast<Uint8>(button);
    events.push_back(event);
}
}

int SDL_PollEvent(SDL_Event* event) {
    if (events.empty()) readGamepads();
    if (events.empty()) return 0;
    *event = events.front();
    events.pop_front();
    return 1;
}

int SDL_PushEvent(SDL_Event* event) {
    events.push_back(*event);
    return 0;
}

// A gamepad shows up in the browser when its first button is pressed, long after the start.
int SDL_NumJoysticks() {
    return gamepadCount;
}

SDL_Joystick* SDL_JoystickOpen(int /*number*/) {
    return nullptr;
}

void SDL_JoystickClose(SDL_Joystick* /*joystick*/) {}

int SDL_JoystickEventState(int state) {
    return state;
}

// --- time

Uint32 SDL_GetTicks() {
    return static_cast<Uint32>(emscripten_get_now() - startTime);
}

void SDL_Delay(Uint32 milliseconds) {
    waitFor(static_cast<int>(milliseconds));
}

// --- surfaces

SDL_Surface* SDL_CreateRGBSurfaceFrom(void* pixels, int width, int height, int depth, int pitch,
                                      Uint32 /*red*/, Uint32 /*green*/, Uint32 /*blue*/,
                                      Uint32 /*alpha*/) {
    auto* surface = new SDL_Surface();
    surface->format = new SDL_PixelFormat();
    surface->format->BitsPerPixel = static_cast<Uint8>(depth);
    surface->format->BytesPerPixel = static_cast<Uint8>(depth / 8);
    surface->flags = SDL_PREALLOC;
    surface->w = width;
    surface->h = height;
    surface->pitch = static_cast<Uint16>(pitch);
    surface->pixels = pixels;
    return surface;
}

void SDL_FreeSurface(SDL_Surface* surface) {
    if (!surface) return;
    if (!(surface->flags & SDL_PREALLOC)) std::free(surface->pixels);
    delete surface->format;
    delete surface;
}

int SDL_LockSurface(SDL_Surface* /*surface*/) {
    return 0;
}

void SDL_UnlockSurface(SDL_Surface* /*surface*/) {}

// --- sources of bytes

static int seekMemory(SDL_RWops* source, int offset, int whence) {
    auto& memory = source->hidden.mem;
    Uint8* const from = whence == RW_SEEK_SET   ? memory.base
                        : whence == RW_SEEK_END ? memory.stop
                                                : memory.here;
    const std::ptrdiff_t place = from - memory.base + offset;
    memory.here = memory.base + std::clamp<std::ptrdiff_t>(place, 0, memory.stop - memory.base);
    return static_cast<int>(memory.here - memory.base);
}

static int readMemory(SDL_RWops* source, void* target, int size, int count) {
    auto& memory = source->hidden.mem;
    if (size <= 0) return 0;
    const int whole = std::min(count, static_cast<int>(memory.stop - memory.here) / size);
    std::memcpy(target, memory.here, static_cast<std::size_t>(whole * size));
    memory.here += whole * size;
    return whole;
}

static int closeMemory(SDL_RWops* source) {
    delete source;
    return 0;
}

static int closeFileCopy(SDL_RWops* source) {
    delete[] source->hidden.mem.base;
    return closeMemory(source);
}

static SDL_RWops* openMemory(Uint8* bytes, std::size_t count, int (*close)(SDL_RWops*)) {
    auto* source = new SDL_RWops();
    source->seek = seekMemory;
    source->read = readMemory;
    source->close = close;
    source->hidden.mem = {bytes, bytes, bytes + count};
    return source;
}

SDL_RWops* SDL_RWFromConstMem(const void* bytes, int count) {
    if (!bytes || count <= 0) return nullptr;
    return openMemory(static_cast<Uint8*>(const_cast<void*>(bytes)),
                      static_cast<std::size_t>(count), closeMemory);
}

// Files are in memory anyway; this copies one.
SDL_RWops* SDL_RWFromFile(const char* path, const char* /*mode*/) {
    std::FILE* file = std::fopen(path, "rb");
    if (!file) return nullptr;
    std::fseek(file, 0, SEEK_END);
    const auto length = static_cast<std::size_t>(std::max(std::ftell(file), 0L));
    std::rewind(file);
    auto* bytes = new Uint8[length];
    const std::size_t count = std::fread(bytes, 1, length, file);
    std::fclose(file);
    return openMemory(bytes, count, closeFileCopy);
}
