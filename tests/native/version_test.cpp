// The version is written several ways in base/version.h (numbers, the
// four-part text, the text people see) and once more in the manifest, which
// the resource compiler copies verbatim; a release that bumps one and forgets
// another shows two versions to the user.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "base/version.h"

namespace {

std::string fourPart() {
    char text[32];
    std::snprintf(text, sizeof text, "%d.%d.%d.%d", HERALDER_VERSION_MAJOR, HERALDER_VERSION_MINOR,
                  HERALDER_VERSION_LETTER - 'a', HERALDER_VERSION_REVISION);
    return text;
}

}  // namespace

TEST(Version, EveryFormAgrees) {
    EXPECT_EQ(HERALDER_VERSION_DOTTED, fourPart());
    const int commas[] = {HERALDER_VERSION_COMMAS};
    char fromCommas[32];
    std::snprintf(fromCommas, sizeof fromCommas, "%d.%d.%d.%d", commas[0], commas[1], commas[2],
                  commas[3]);
    EXPECT_EQ(fromCommas, fourPart());
    char display[16];
    std::snprintf(display, sizeof display, "%d.%d%c", HERALDER_VERSION_MAJOR,
                  HERALDER_VERSION_MINOR, HERALDER_VERSION_LETTER);
    EXPECT_STREQ(HERALDER_VERSION_DISPLAY, display);
}

TEST(Version, ManifestNamesTheSameVersion) {
    std::ifstream in(std::string(HERALDER_SOURCE_DIR) + "/resources/heralder.manifest");
    ASSERT_TRUE(in);
    std::stringstream text;
    text << in.rdbuf();
    const std::string identity = "name=\"Quenmark.Heralder\" version=\"";
    const std::size_t at = text.str().find(identity);
    ASSERT_NE(at, std::string::npos);
    const std::size_t start = at + identity.size();
    EXPECT_EQ(text.str().substr(start, text.str().find('"', start) - start), fourPart());
}
