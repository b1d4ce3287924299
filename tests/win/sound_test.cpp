// The sound player's view of the system: the override file in the user's data
// folder, the desktop scheme's navigation sound with its environment
// variables, and the results that do not depend on a sound device (the test
// machine may have none): silence when muted or empty, 1 for a file name
// whether or not it plays, 0 when the desktop has no scheme key.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

#include "base/win_headers.h"
#include "settings/file_locations_win.h"
#include "shell/sound_win.h"

namespace {

// A short silent wave file: 8 kHz, 8 bits, mono, 80 samples.
void writeWave(const std::string& path) {
    const char header[] =
        "RIFF\x74\0\0\0WAVEfmt \x10\0\0\0\x01\0\x01\0\x40\x1f\0\0\x40\x1f\0\0\x01\0\x08\0"
        "data\x50\0\0\0";
    std::ofstream(path, std::ios::binary)
        << std::string(header, sizeof header - 1) << std::string(80, '\x80');
}

// The scheme key as the test wants it. The test prefix is made afresh for
// every run and has no sound scheme, so the key is simply removed afterwards.
struct SchemeKey {
    ~SchemeKey() { remove(); }
    void set(const char* value, DWORD type) {
        ASSERT_EQ(RegSetKeyValueA(HKEY_CURRENT_USER, key.c_str(), nullptr, type, value,
                                  DWORD(strlen(value) + 1)),
                  ERROR_SUCCESS);
    }
    void remove() { RegDeleteKeyA(HKEY_CURRENT_USER, key.c_str()); }
    const std::string key{kSchemeSoundKey};
};

std::string windowsFolder() {
    char folder[MAX_PATH] = {};
    GetWindowsDirectoryA(folder, MAX_PATH);
    return folder;
}

TEST(NotifySound, SchemeSoundIsReadWithItsVariablesExpanded) {
    SchemeKey scheme;
    const std::string def(kDefaultSoundName);
    SetEnvironmentVariableA("HERALDER_SOUND_DIR", "C:\\sounds");

    scheme.set("%HERALDER_SOUND_DIR%\\nav.wav", REG_EXPAND_SZ);
    SoundFacts facts = gatherSoundFacts(def);
    EXPECT_TRUE(facts.schemeKeyOpened);
    EXPECT_EQ(facts.schemeSound, "C:\\sounds\\nav.wav");
    EXPECT_EQ(facts.windowsFolder, windowsFolder());

    scheme.set("", REG_SZ);
    facts = gatherSoundFacts(def);
    EXPECT_TRUE(facts.schemeKeyOpened);
    EXPECT_EQ(facts.schemeSound, "");

    // The longest path a value may hold is read whole.
    const std::string longest = "C:\\" + std::string(MAX_PATH - 8, 's') + ".wav";
    scheme.set(longest.c_str(), REG_SZ);
    EXPECT_EQ(gatherSoundFacts(def).schemeSound, longest);

    scheme.remove();
    facts = gatherSoundFacts(def);
    EXPECT_FALSE(facts.schemeKeyOpened);
    // No scheme key and no override: silence, without trying the Windows folder.
    EXPECT_EQ(playNotifySound(def), 0);

    // Only the default sound consults the scheme.
    scheme.set("C:\\nav.wav", REG_SZ);
    EXPECT_FALSE(gatherSoundFacts("C:\\ding.wav").schemeKeyOpened);
    SetEnvironmentVariableA("HERALDER_SOUND_DIR", nullptr);
}

TEST(NotifySound, OverrideFileIsFoundInTheUsersDataFolder) {
    const std::string path = getUserDataPath(kOverrideSoundName);
    EXPECT_FALSE(gatherSoundFacts("C:\\ding.wav").overrideFile);
    ensureDataFolders();
    writeWave(path);
    EXPECT_EQ(gatherSoundFacts("::RSRC::7").overrideFile.value_or(""), path);
    // Started or not, a file name ends in 1: the override or the name.
    EXPECT_EQ(playNotifySound("C:\\no such sound.wav"), 1);
    PlaySoundA(nullptr, nullptr, 0);
    DeleteFileA(path.c_str());
    EXPECT_FALSE(gatherSoundFacts("C:\\ding.wav").overrideFile);
}

TEST(NotifySound, MuteAndEmptySoundNamesAreSilent) {
    EXPECT_EQ(playNotifySound(""), 0);
    EXPECT_EQ(playNotifySound("C:\\no such sound.wav"), 1);

    EXPECT_EQ(setSoundMute(1), 0u);
    EXPECT_TRUE(gatherSoundFacts("").muted);
    for (const char* soundName : {"C:\\no such sound.wav", "::RSRC::7", "~~~DEFAULT~~~"})
        EXPECT_EQ(playNotifySound(soundName), 0) << soundName;
    EXPECT_EQ(setSoundMute(0), 1u);
    EXPECT_FALSE(gatherSoundFacts("").muted);
}

}  // namespace
