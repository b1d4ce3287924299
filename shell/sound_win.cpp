// Notification sounds on Windows: the facts come from the file system and the
// user's registry, the choice from sound_choice.cpp, and the sound itself from
// PlaySound, asynchronous and never the system's default beep, so a missing
// file is silence.
#include "shell/sound_win.h"

#include "base/unique_handle.h"
#include "base/win_handles.h"
#include "settings/file_locations_win.h"

namespace {

uint32_t muted = 0;

bool isFile(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// The scheme's value may hold %SystemRoot% and the like; both the value and
// its expansion are kept to 260 characters.
void readSchemeSound(SoundFacts& facts) {
    HKEY opened = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, std::string(kSchemeSoundKey).c_str(), 0, KEY_READ,
                      &opened) != ERROR_SUCCESS)
        return;
    UniqueKey key(opened);
    facts.schemeKeyOpened = true;
    // One byte more than is asked for: a value stored without its zero still
    // ends in one.
    char value[MAX_PATH + 1] = {};
    DWORD type = 0, size = MAX_PATH;
    if (RegQueryValueExA(key.get(), nullptr, nullptr, &type, reinterpret_cast<BYTE*>(value),
                         &size) != ERROR_SUCCESS ||
        (type != REG_SZ && type != REG_EXPAND_SZ))
        return;
    char expanded[MAX_PATH] = {};
    const DWORD length = ExpandEnvironmentStringsA(value, expanded, MAX_PATH);
    if (length == 0 || length > MAX_PATH) return;
    facts.schemeSound = expanded;
}

int32_t play(const SoundAttempt& attempt) {
    if (attempt.kind == SoundAttempt::Kind::File)
        return PlaySoundA(attempt.path.c_str(), nullptr, SND_ASYNC | SND_FILENAME | SND_NODEFAULT);
    HMODULE module =
        attempt.module ? reinterpret_cast<HMODULE>(*attempt.module) : GetModuleHandleA(nullptr);
    return PlaySoundA(MAKEINTRESOURCEA(attempt.resourceId), module, SND_RESOURCE | SND_ASYNC);
}

SoundOutput& output() {
    static SoundOutput current = play;
    return current;
}

}  // namespace

SoundFacts gatherSoundFacts(const std::string& soundName) {
    SoundFacts facts;
    facts.muted = muted != 0;
    const std::string overridePath = cutToPathBuffer(getUserDataPath(kOverrideSoundName));
    if (!overridePath.empty() && isFile(overridePath)) facts.overrideFile = overridePath;
    if (soundName == kDefaultSoundName) {
        readSchemeSound(facts);
        char folder[MAX_PATH] = {};
        const UINT length = GetWindowsDirectoryA(folder, MAX_PATH);
        if (length > 0 && length < MAX_PATH) facts.windowsFolder = folder;
    }
    return facts;
}

int32_t playNotifySound(const std::string& soundName) {
    if (soundName.empty() || muted) return 0;
    return playAttempts(chooseNotifySound(soundName, gatherSoundFacts(soundName)), output());
}

SoundOutput setSoundOutput(SoundOutput replacement) {
    SoundOutput previous = std::move(output());
    output() = replacement ? std::move(replacement) : SoundOutput(play);
    return previous;
}

uint32_t setSoundMute(uint32_t mute) {
    const uint32_t previous = muted;
    muted = mute;
    return previous;
}
