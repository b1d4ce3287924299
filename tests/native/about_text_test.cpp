// The About box's version line and the identifier of its Shift action.
#include <gtest/gtest.h>

#include <string>

#include "dialogs/about_text.h"

namespace {

TEST(AboutText, TemplateTakesTheFourValuesInOrder) {
    const struct {
        const char* templ;
        const char* want;
    } cases[] = {
        {"Version %d.%d%c%s\n\nNotice.", "Version 17.0a (Revision 2)\n\nNotice."},
        {"Version %d.%d%c%s, 100%% ours", "Version 17.0a (Revision 2), 100% ours"},
        // Anything past the four values, or out of their order, stays as written.
        {"%d.%d%c%s %d %s", "17.0a (Revision 2) %d %s"},
        {"%s %d", "%s 17"},
        {"50% off%", "50% off%"},
        {"", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(formatAboutText(c.templ), c.want) << c.templ;
    EXPECT_EQ(programVersionText(), "17.0a (Revision 2)");
}

TEST(AboutText, GuidLosesItsBracesAndWhateverFollows) {
    const struct {
        const char* registry;
        const char* want;
    } cases[] = {
        {"{0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0}", "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0"},
        {"{0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0}  ", "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0"},
        {"0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0", "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0"},
        {"{}", ""},
        {"", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(guidClipboardText(c.registry), c.want) << c.registry;
}

}  // namespace
