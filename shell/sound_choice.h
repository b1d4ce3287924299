#pragma once
// Which notification sound to play, decided without touching the system: the
// player (sound_win.cpp) gathers the facts (the override file, the desktop
// scheme's navigation sound, the Windows folder) and then tries the attempts
// chosen here in order. Kept portable so that every form of sound name is
// checked natively.
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

inline constexpr std::string_view kDefaultSoundName = "~~~DEFAULT~~~";
inline constexpr std::string_view kResourceSoundPrefix = "::RSRC::";
inline constexpr std::string_view kOverrideSoundName = "Notify.wav";
inline constexpr std::string_view kSchemeSoundKey =
    "AppEvents\\Schemes\\Apps\\Explorer\\Navigating\\.Current";
inline constexpr std::string_view kFallbackSoundName = "media\\Windows Navigation Start.wav";

struct SoundFacts {
    bool muted = false;
    // "Notify.wav" in the user's data folder, when that file exists.
    std::optional<std::string> overrideFile;
    // Only consulted for the default sound: whether the scheme key could be
    // opened, and its value with environment variables expanded.
    bool schemeKeyOpened = false;
    std::string schemeSound;
    std::string windowsFolder;
};

struct SoundAttempt {
    enum class Kind { File, Resource };
    Kind kind = Kind::File;
    std::string path;  // Kind::File
    int32_t resourceId = 0;
    // Kind::Resource: nullopt for the program's own module, else the handle
    // value written in the sound name, taken literally (0 included).
    std::optional<intptr_t> module;
    // The call's result is 1 whether or not the sound started.
    bool forceOne = false;

    bool operator==(const SoundAttempt&) const = default;
};

// The sounds to try, in order. The player stops at the first that starts and
// returns its result (1 when forceOne); when none starts, the result of the
// last one; nothing to try gives 0.
std::vector<SoundAttempt> chooseNotifySound(std::string_view soundName, const SoundFacts& facts);
// Tries the attempts with play (non-zero: the sound started) as described
// above, and returns the result.
int32_t playAttempts(const std::vector<SoundAttempt>& attempts,
                     const std::function<int32_t(const SoundAttempt&)>& play);

// Text cut to what a 260-character buffer holds with its terminator.
std::string cutToPathBuffer(std::string text);
// The Windows folder's fallback sound: folder, "\" when missing, name.
std::string fallbackSoundPath(std::string_view windowsFolder);
