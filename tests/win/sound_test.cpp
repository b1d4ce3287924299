// The sound player's view of the system: the override file in the user's data
// folder, the desktop scheme's navigation sound with its environment
// variables, and the results that do not depend on a sound device (the test
// machine may have none): silence when muted or empty, 1 for a file name
// whether or not it plays, 0 when the desktop has no scheme key.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <vector>

#include "base/win_headers.h"
#include "notify/sound_win.h"
#include "settings/file_locations_win.h"

namespace {

// A short silent wave file: 8 kHz, 8 bits, mono, 80 samples.
void writeWave(const std::string& path) {
    std::vector<char> data(80, char(0x80));
    auto put32 = [](std::ofstream& out, uint32_t v) { out.write(reinterpret_cast<char*>(&v), 4); };
    auto put16 = [](std::ofstream& out, uint16_t v) { out.write(reinterpret_cast<char*>(&v), 2); };
    std::ofstream out(path, std::ios::binary);
    out.write("RIFF", 4);
    put32(out, 36 + uint32_t(data.size()));
    out.write("WAVEfmt ", 8);
    put32(out, 16);
    put16(out, 1);     // PCM
    put16(out, 1);     // mono
    put32(out, 8000);  // samples per second
    put32(out, 8000);  // bytes per second
    put16(out, 1);     // block align
    put16(out, 8);     // bits per sample
    out.write("data", 4);
    put32(out, uint32_t(data.size()));
    out.write(data.data(), data.size());
}

// The scheme key as the test wants it. The test prefix is made afresh for
// every run and has no sound scheme, so the key is simply removed afterwards.
class SchemeKey {
  public:
    ~SchemeKey() { remove(); }
    void set(const char* value, DWORD type) {
        HKEY key;
        ASSERT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, name().c_str(), 0, nullptr, 0, KEY_WRITE,
                                  nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        RegSetValueExA(key, nullptr, 0, type, reinterpret_cast<const BYTE*>(value),
                       DWORD(strlen(value) + 1));
        RegCloseKey(key);
    }
    void remove() { RegDeleteKeyA(HKEY_CURRENT_USER, name().c_str()); }

  private:
    static std::string name() { return std::string(kSchemeSoundKey); }
};

// Notify.wav in the user's data folder for the length of a test.
class OverrideSound {
  public:
    OverrideSound() : path_(getUserDataPath(kOverrideSoundName)) {
        ensureDataFolders();
        writeWave(path_);
    }
    ~OverrideSound() { DeleteFileA(path_.c_str()); }
    const std::string& path() const { return path_; }

  private:
    std::string path_;
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
    EXPECT_FALSE(gatherSoundFacts("C:\\ding.wav").overrideFile);
    {
        OverrideSound sound;
        const SoundFacts facts = gatherSoundFacts("::RSRC::7");
        ASSERT_TRUE(facts.overrideFile);
        EXPECT_EQ(*facts.overrideFile, sound.path());
        // Started or not, a file name ends in 1: the override or the name.
        EXPECT_EQ(playNotifySound("C:\\no such sound.wav"), 1);
        PlaySoundA(nullptr, nullptr, 0);
    }
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
