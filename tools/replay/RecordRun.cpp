// SPDX-License-Identifier: Zlib
#include "tools/replay/RecordRun.h"

#include <algorithm>
#include <filesystem>

#include "base/FilePath.h"
#include "screens/TitleScreen.h"
#include "tools/CommandLine.h"
#include "tools/Inspector.h"
#include "tools/replay/RunLevel.h"

static constexpr unsigned bitOf(int key) {
    return 1u << key;
}

static constexpr unsigned directions = bitOf(InputScript::action) - 1;

// The options with one of the game's tunes, by the seed, unless they name one.
static GameRun::Options withTune(GameRun::Options options) {
    if (!options.pitches.empty()) return options;
    const FilePath folder = FilePath(GameRun::dataFolder()).join("pitches");
    std::vector<std::string> tunes;
    for (std::uint32_t i = 0; i < folder.getEntryCount(); ++i) {
        const FilePath entry = folder.getEntry(i);
        if (entry.isOrdinaryFile() && entry.getExtension() == "txt") tunes.push_back(entry.text());
    }
    std::sort(tunes.begin(), tunes.end()); // the folder's order differs between machines
    if (!tunes.empty()) options.pitches = tunes[options.seed % tunes.size()];
    return options;
}

static InputScript::Header headerOf(const std::string& player, const RunLevel& level,
                                    const GameRun::Options& options) {
    InputScript::Header header;
    header.game = programVersion();
    header.level = level.getName();
    header.levelHash = level.getHash();
    header.seed = options.seed;
    header.pitches = std::filesystem::path(options.pitches).filename();
    header.player = player;
    return header;
}

RecordRun::RecordRun(const std::string& file, const std::string& player, const RunLevel& level,
                     Options chosen)
    : GameRun(withTune(std::move(chosen))), writer(file, headerOf(player, level, options)) {}

void RecordRun::play() {
    try {
        run();
    } catch (...) {
        if (frame == 0) writer.remove();
        throw;
    }
    const RunResult& result = getResult();
    writer.writeEnd(frame, result.goal ? std::optional(result.frames) : std::nullopt);
}

// The game's own bindings. Any other key or button only turns a page of the title.
static int keyOf(SDLKey symbol) {
    switch (symbol) {
    case SDLK_UP: return InputScript::up;
    case SDLK_LEFT: return InputScript::left;
    case SDLK_RIGHT: return InputScript::right;
    case SDLK_DOWN: return InputScript::down;
    case SDLK_SPACE:
    case SDLK_z: return InputScript::action;
    case SDLK_ESCAPE: return InputScript::escape;
    default: return InputScript::keyCount;
    }
}

void RecordRun::takeWindowEvent(const SDL_Event& event) {
    switch (event.type) {
    case SDL_QUIT: closed = true; break;
    case SDL_KEYDOWN: takeKey(keyOf(event.key.keysym.sym), true); break;
    case SDL_KEYUP: takeKey(keyOf(event.key.keysym.sym), false); break;
    case SDL_JOYBUTTONDOWN: takeKey(InputScript::keyCount, true); break;
    default: break;
    }
}

void RecordRun::takeKey(int key, bool isPressed) {
    if (isPressed) pressed |= bitOf(key);
    if (key == InputScript::escape && isPressed) closed = true;
    if (!InputScript::isDirection(key)) return;
    held = isPressed ? held | bitOf(key) : held & ~bitOf(key);
}

void RecordRun::addEvents() {
    if (closed || frame >= InputScript::mostFrames) {
        addQuit();
        return;
    }
    unsigned keys = held | (pressed & bitOf(InputScript::action));
    // On the title any key turns the page, even one already released or one that the play ignores.
    const bool onTitle = dynamic_cast<TitleScreen*>(Inspector::state(*application)) != nullptr;
    const bool turned = (keys & ~shown) != 0;
    if (onTitle && pressed != 0 && !turned) keys |= bitOf(InputScript::action);
    writer.writeFrame(frame, keys);

    for (int key = 0; InputScript::isDirection(key); ++key) {
        if (shown & ~held & bitOf(key)) addKey(key, false);
    }
    for (int key = 0; InputScript::isDirection(key); ++key) {
        if (held & ~shown & bitOf(key)) addKey(key, true);
    }
    if (keys & bitOf(InputScript::action)) {
        addKey(InputScript::action, true);
        addKey(InputScript::action, false);
    }
    shown = held & directions;
    pressed = 0;
}
