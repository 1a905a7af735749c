// SPDX-License-Identifier: Zlib
#include "tools/replay/OfflineRun.h"

#include <cstdlib>
#include <filesystem>

#include "app/Application.h"
#include "game/PlayRules.h"
#include "platform/Platform.h"
#include "tools/Inspector.h"

// Samples of sound in even and odd frames: 661 and 662, since 15 ms are 661.5.
static constexpr std::uint32_t evenSamples = framePeriod * 44100 / 1000;
static constexpr std::uint32_t oddSamples = framePeriod * 2 * 44100 / 1000 - evenSamples;

static std::filesystem::path makeSettingsFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "tarnwick-replay-XXXXXX").string();
    const char* made = mkdtemp(name.data());
    return made ? made : "/nonexistent";
}

OfflineRun::OfflineRun(const InputScript& played, const RunLevel& level, Options chosen)
    : ScriptRun(played, level, std::move(chosen)) {
    if (options.gameArguments.empty()) options.gameArguments = Inspector::quietArguments();
    options.gameArguments.push_back("-ns");
}

void OfflineRun::runOffline() {
    const std::filesystem::path settings = makeSettingsFolder();
    Platform::setEnvironment("XDG_CONFIG_HOME", settings);
    std::exception_ptr problem;
    try {
        runScript();
    } catch (...) {
        problem = std::current_exception();
    }
    std::error_code ignored;
    std::filesystem::remove_all(settings, ignored);
    if (problem) std::rethrow_exception(problem);
}

// The sound is always rendered, since the music uses random numbers.
bool OfflineRun::finishFrame() {
    const std::uint32_t samples = frame % 2 == 0 ? evenSamples : oddSamples;
    std::vector<float> sound(std::size_t{samples} * 2);
    application->fillBuffer(nullptr, sound.data(), samples);
    takeFrame(sound);
    return true;
}
