// The sound player's view of the system: the override file, the desktop
// scheme's sound with its variables expanded, and the results that need no
// sound device: silence when muted, empty or without a scheme key, 1 for a
// file name whether or not it plays.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <optional>
#include <tuple>

#include "base/win_headers.h"
#include "shell/sound_win.h"
#include "settings/file_locations_win.h"
#include "tests/win/test_support.h"

TEST(NotifySound, SchemeSoundIsReadWithItsVariablesExpanded) {
    const std::string def(kDefaultSoundName);
    const std::string longest = "C:\\" + std::string(MAX_PATH - 8, 's') + ".wav";
    SetEnvironmentVariableA("HERALDER_SOUND_DIR", "C:\\sounds");
    char windows[MAX_PATH] = {};
    GetWindowsDirectoryA(windows, MAX_PATH);
    const struct {
        const char* value;  // nullptr: no scheme key
        DWORD type;
        std::string want;
    } cases[] = {
        {"%HERALDER_SOUND_DIR%\\nav.wav", REG_EXPAND_SZ, "C:\\sounds\\nav.wav"},
        {"", REG_SZ, ""},
        {longest.c_str(), REG_SZ, longest},  // the longest path a value may hold, whole
        {nullptr, 0, ""},
    };
    for (const auto& c : cases) {
        std::optional<ScratchKey> scheme;
        if (c.value)
            ASSERT_TRUE(scheme.emplace(HKEY_CURRENT_USER, std::string(kSchemeSoundKey))
                            .set(nullptr, c.type, c.value, DWORD(strlen(c.value) + 1)));
        const SoundFacts facts = gatherSoundFacts(def);
        EXPECT_EQ(std::tuple(facts.schemeKeyOpened, facts.schemeSound, facts.windowsFolder),
                  std::tuple(c.value != nullptr, c.want, std::string(windows)));
        // No scheme key and no override: silence, without trying the Windows folder.
        if (!c.value) EXPECT_EQ(playNotifySound(def), 0);
        // Only the default sound consults the scheme.
        EXPECT_FALSE(gatherSoundFacts("C:\\ding.wav").schemeKeyOpened);
    }
    SetEnvironmentVariableA("HERALDER_SOUND_DIR", nullptr);
}

TEST(NotifySound, OverrideFileMuteAndEmptyNames) {
    const std::string path = getUserDataPath(kOverrideSoundName);
    ensureDataFolders();
    std::ofstream(path, std::ios::binary) << "not a wave: only the file's presence counts";
    EXPECT_EQ(gatherSoundFacts("::RSRC::7").overrideFile.value_or(""), path);
    // Started or not, a file name ends in 1: the override or the name.
    EXPECT_EQ(playNotifySound("C:\\no such sound.wav"), 1);
    DeleteFileA(path.c_str());
    EXPECT_FALSE(gatherSoundFacts("C:\\ding.wav").overrideFile);

    EXPECT_EQ(playNotifySound(""), 0);
    EXPECT_EQ(playNotifySound("C:\\no such sound.wav"), 1);
    EXPECT_EQ(setSoundMute(1), 0u);
    EXPECT_TRUE(gatherSoundFacts("").muted);
    for (const char* soundName : {"C:\\no such sound.wav", "::RSRC::7", "~~~DEFAULT~~~"})
        EXPECT_EQ(playNotifySound(soundName), 0) << soundName;
    EXPECT_EQ(setSoundMute(0), 1u);
    EXPECT_FALSE(gatherSoundFacts("").muted);
}
