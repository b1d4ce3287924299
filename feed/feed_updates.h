#pragma once
// Maintenance the feed carries for the program itself: a setting update
// assigns one of the program's settings, a graphic update replaces an image
// file in the product folder. Both come over plain HTTP, so neither may reach
// further than a harmless setting or a plain file inside that folder: settings
// that name files or programs the agent opens are refused, and graphic names
// that are devices or could leave the folder are refused.
#include <optional>
#include <string>
#include <string_view>

#include "feed/notification_run.h"
#include "feed/seen_list.h"
#include "feed/update_item.h"
#include "settings/settings.h"

// Assigns the named setting (name compared case-insensitively) from value: a
// flag stores 1 or 0 by atoi, a number or colour atoi, a text at most 260
// characters. False when there is no such setting or it may not be changed
// from the feed.
bool applySettingUpdate(Settings& settings, std::string_view name, std::string_view value);

// "Name = value" of a setting update's text: the name runs to the first blank,
// control character or "=" (260 characters at most); blanks and "=" after it are
// skipped; the value is the rest, line breaks included.
struct SettingAssignment {
    std::string name;
    std::string value;
};
SettingAssignment parseSettingAssignment(std::string_view plainText);

// Applies the item's assignment and marks the item seen, known name or not. An
// item without text is left alone.
void performSettingUpdate(UpdateItem& item, Settings& settings, SeenList& seen);

// The local file name a graphic url names: its last path component (after "/"
// or "\"), trailing dots and blanks dropped as Windows drops them, split into
// name and extension. nullopt when that name is empty, holds a character no
// file name may hold (":" would open an alternate stream) or is a device name.
struct GraphicFileName {
    std::string name;
    std::string extension;  // with its dot, or empty
};
std::optional<GraphicFileName> graphicFileName(std::string_view url);

// The picture a graphic update may replace, by its extension (any case):
// .png, .jpg, .jpeg, .bmp or .gif; None for every other file.
enum class PictureKind { None, Png, Jpeg, Bmp, Gif };
PictureKind pictureKindOf(std::string_view extension);
// True when body begins as a file of that kind begins.
bool beginsLikePicture(std::string_view body, PictureKind kind);

// Downloads the item's url into the host's graphic folder through a temporary
// file that replaces the old file in one step once it is complete, and marks
// the item seen. A refused name (no picture extension included), a failed
// download or a body that is not a picture of its extension is silent and
// leaves the item unmarked; a failed write is reported.
void performGraphicUpdate(UpdateItem& item, RunHost& host, SeenList& seen);
