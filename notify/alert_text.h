#pragma once
// The texts of the alert window, apart from the window: its caption, the
// header line with its length rules, the picture's file name, the body text's
// place and the height the window fits itself to. Portable, so the rules are
// tested natively against tables.
#include <optional>
#include <string>
#include <string_view>

#include "feed/update_item.h"

// The body text is painted between these x positions (client pixels).
inline constexpr int kAlertTextLeft = 16;
inline constexpr int kAlertTextRight = 586;
inline constexpr int kAlertMinimumHeight = 208;  // outer height, pixels

// TITLE, or the template's own "Alert" when it is absent or empty.
std::string alertCaption(const UpdateItem& item);

// " Foo 2.1b (Revision 3) Released 07-15-2003": product, version and release
// date, built in a 260-character buffer whose pieces are each dropped when they
// would not fit. nullopt when the window shows no header line: neither
// APPLICATION nor DATE, or an off-topic item.
std::optional<std::string> alertHeaderLine(const UpdateItem& item);

// " %d.%d%c" of the announced version; a REVISION of 0 ends it after the minor
// number. Shared with the version notice.
std::string announcedVersionText(const UpdateItem& item);

// Where the body text starts (client pixels) above which the header line and
// the check box may stand.
int alertTextTop(bool headerLine, bool checkBox);

// The window's outer height for a body text measured at textHeight pixels:
// caption, frames, top offset, text and an 8-pixel margin, kept between 208
// and the screen height - 4. The margin and the minimum are 96-DPI pixels
// scaled to dpi; the other measures come already at the window's scale.
int fitAlertHeight(int captionHeight, int frameHeight, int top, int textHeight, int screenHeight,
                   unsigned dpi = 96);

// The part of a body text that can show at all in maxLines lines of the text
// column: lines beyond the screen and the ends of words wider than the column
// are cut away, so a text of megabytes costs no more to measure and paint
// than a screenful. Every glyph of a real font is at least a pixel wide, which
// bounds what one line can hold.
std::string alertVisibleText(std::string_view text, int maxLines);

// GRAPHIC when it is a plain file name that may be fetched and stored in the
// images folder; nullopt when absent, empty, or anything that could reach
// outside the folder or open a device.
std::optional<std::string> alertPictureName(const UpdateItem& item);

// Whether a fetched body is a PNG or JPEG file by its first bytes. The server's
// status is not looked at, so a missing picture arrives as an error page; kept
// under the picture's name it would stand for the picture for good.
bool looksLikePicture(std::string_view body);

// What Ctrl+C copies: the title, a blank line and the text.
std::string alertClipboardText(const UpdateItem& item);
