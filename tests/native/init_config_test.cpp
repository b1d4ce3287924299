// The first-run sign-up's words and decisions.
#include <gtest/gtest.h>

#include <string>

#include "dialogs/init_config.h"

namespace {

TEST(InitConfig, SignUpTextHasItsEightParagraphsAndFixedPieces) {
    const std::string text = kInitConfigText;
    int paragraphs = 1;
    for (std::size_t at = text.find("\n\n"); at != std::string::npos;
         at = text.find("\n\n", at + 2))
        ++paragraphs;
    EXPECT_EQ(paragraphs, 8);
    EXPECT_EQ(text.find("Sign up with Heralder...\n\nThe Quenmark Heralder notification agent can "
                        "alert you when new versions of Quenmark' products are available."),
              0u);
    EXPECT_NE(text.find("\n\nSelect Start > Programs > Quenmark > Heralder at any time to "
                        "configure Heralder.\n\n"),
              std::string::npos);
    const std::string ending =
        "\n\nIMPORTANT: The first time Heralder runs, it will probably have a lot of news to catch "
        "up with. It will prompt you to step through these windows, or ignore the pending items, "
        "as you prefer.";
    ASSERT_GE(text.size(), ending.size());
    EXPECT_EQ(text.substr(text.size() - ending.size()), ending);
    EXPECT_EQ(text.find("\n\n\n"), std::string::npos);
}

TEST(InitConfig, OldProgramPathWithOrWithoutBackslash) {
    const std::string folder255(255, 'f');
    const struct {
        std::string folder;
        std::string path;
    } cases[] = {
        {"", ""},
        {"C:\\Old", "C:\\Old\\QMK-heralder.exe"},
        {"C:\\Old\\", "C:\\Old\\QMK-heralder.exe"},
        {"\\", "\\QMK-heralder.exe"},
        {folder255, (folder255 + "\\QMK-heralder.exe").substr(0, 260)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.folder);
        EXPECT_EQ(oldInstallationProgramPath(c.folder), c.path);
    }
}

TEST(InitConfig, ClosingMarksItDoneAndOnlyCloseStoresTheChoice) {
    const struct {
        int result;
        uint32_t stored, chosen;
        bool apply;
        uint32_t want;
    } cases[] = {
        {1, 102, 101, true, 101},
        {1, 101, 102, true, 102},
        {0, 102, 101, false, 102},
        {0, 7, 101, false, 7},
    };
    for (const auto& c : cases) {
        Settings record;
        record.InitConfigDone = 0;
        record.StartupOptions = c.stored;
        EXPECT_EQ(settleInitConfig(record, c.result, c.chosen), c.apply);
        EXPECT_EQ(record.InitConfigDone, 1u);
        EXPECT_EQ(record.StartupOptions, c.want);
    }
}

}  // namespace
