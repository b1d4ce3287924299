// Reading settings files: the forgiving prefix-matching rules that existing
// files rely on, line by line.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "settings/settings_file.h"

namespace {

using Values = std::map<std::string, std::string>;

Values valuesOf(const Settings& record) {
    Values values;
    for (const SettingDef& def : SettingsTable) values[def.key] = settingValueText(record, def);
    return values;
}

// Every key's value after reading text into a fresh record, with only the
// changed keys listed.
Values changesAfterReading(std::string_view text) {
    Settings record;
    readSettingsText(record, text);
    Values defaults = valuesOf(Settings{}), changed;
    for (const auto& [key, value] : valuesOf(record))
        if (defaults[key] != value) changed[key] = value;
    return changed;
}

struct ReadCase {
    const char* name;
    std::string text;
    Values changed;
};

const std::string x243(243, 'x');

const ReadCase readCases[] = {
    {"one key", "BeNoisy = 0\n", {{"BeNoisy", "0"}}},
    {"two equals", "BeNoisy = = 0\nNoiseType = = 5\n", {{"BeNoisy", "0"}, {"NoiseType", "0"}}},
    {"no equals", "BeNoisy 0\n", {{"BeNoisy", "0"}}},
    {"other case", "beNoisy = 0\nALERTFONTSIZE = 3\n", {}},
    {"write-only keys", "VersionNumber = 1\nBuildDate = x\nPatchLevel = 7\nVer = 2\n", {}},
    {"prefix", "Sticky = 5\n", {{"StickyWindowBottom", "5"}}},
    {"prefix past write-only", "P = 9\nB = 0\n", {{"PromptMultipleCount", "9"}, {"BeNoisy", "0"}}},
    {"blank-led", " BeNoisy = 0\n", {{"AlertBackgroundColor", "0"}}},
    {"equals-led", "=77\n", {{"AlertBackgroundColor", "77"}}},
    {"empty line",
     "AlertTextColor = 5\n\n",
     {{"AlertTextColor", "5"}, {"AlertBackgroundColor", "0"}}},
    {"section and unknown", "[HERALDER]\nNoSuchKey = 1\nBeNoisyX = 0\n", {}},
    {"comments", ";BeNoisy = 0\n; \n", {}},
    {"most", "AlertBackgroundColor = 4294967295\n", {{"AlertBackgroundColor", "4294967295"}}},
    {"minus one", "AlertTextColor = -1\n", {{"AlertTextColor", "4294967295"}}},
    {"wraps",
     "NoiseType = 4294967296\nAlertFontSize = 99999999999\n",
     {{"NoiseType", "0"}, {"AlertFontSize", "1215752191"}}},
    {"signs and junk",
     "NoiseType = +12\nAlertFontSize = 12abc\nBeNoisy = --5\nSoftButtons = x3\n",
     {{"NoiseType", "12"}, {"AlertFontSize", "12"}, {"BeNoisy", "0"}, {"SoftButtons", "0"}}},
    {"minus large", "StartupOptions = -4294967295\n", {{"StartupOptions", "1"}}},
    {"text", "AlertFontName = Times New Roman  \n", {{"AlertFontName", "Times New Roman  "}}},
    {"text at tab", "AlertFontName = Times\tNew\n", {{"AlertFontName", "Times"}}},
    {"text empty",
     "AlertFontName =\nColourTableFile\n",
     {{"AlertFontName", ""}, {"ColourTableFile", ""}}},
    {"text keeps equals", "AlertFontName==  =x = y\n", {{"AlertFontName", "=x = y"}}},
    {"lone cr cuts", "BeNoisy = 0\rAlertFontSize = 9\n", {{"BeNoisy", "0"}}},
    {"ctrl-z ends",
     "BeNoisy = 0\n\x1a"
     "AlertFontSize = 9\n",
     {{"BeNoisy", "0"}}},
    {"long line splits",
     "AlertFontName = " + x243 + "StickyWindowTop = 3\n",
     {{"AlertFontName", x243}, {"StickyWindowTop", "3"}}},
    {"259 then lf",
     "AlertTextColor = 5" + std::string(241, ' ') + "\nBeNoisy = 0\n",
     {{"AlertTextColor", "5"}, {"AlertBackgroundColor", "0"}, {"BeNoisy", "0"}}},
};

}  // namespace

TEST(SettingsRead, AppliesLinesAsTheProgramAlwaysHas) {
    for (const ReadCase& c : readCases) EXPECT_EQ(changesAfterReading(c.text), c.changed) << c.name;
}

TEST(SettingsRead, KeepsWhatTheRecordHadForKeysNotInTheFile) {
    Settings record;
    record.NoiseType = 5;
    record.AlertFontName = "Arial";
    readSettingsText(record, "BeNoisy = 0\n");
    EXPECT_EQ(record.NoiseType, 5u);
    EXPECT_EQ(record.AlertFontName, "Arial");
    EXPECT_EQ(record.BeNoisy, 0u);
}

TEST(SettingsTableRows, LookupsAndAccessorsAgreeWithTheRows) {
    int textRows = 0;
    for (const SettingDef& def : SettingsTable) {
        EXPECT_NE(def.isNumeric(), def.isText()) << def.key;
        EXPECT_EQ(findSetting(def.key), &def);
        Settings record;
        EXPECT_EQ(settingNumber(record, def) != nullptr, def.isNumeric()) << def.key;
        EXPECT_EQ(settingText(record, def) != nullptr, def.isText()) << def.key;
        textRows += def.isText();
    }
    EXPECT_EQ(textRows, 7);
    EXPECT_EQ(findSetting("benoisy"), nullptr);
    EXPECT_EQ(findSetting("BeNois"), nullptr);
    ASSERT_NE(findSettingNoCase("benoisy"), nullptr);
    EXPECT_STREQ(findSettingNoCase("benoisy")->key, "BeNoisy");
    EXPECT_EQ(findSettingNoCase("benois"), nullptr);
}
