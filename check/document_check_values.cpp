// Judgements of single values for the document check (see
// document_check_values.h). Each reuses the agent's own rule, so the check can
// never disagree with what the agent will do.
#include "check/document_check_values.h"

#include <optional>

#include "base/crt_text.h"
#include "check/document_check_text.h"
#include "feed/feed_updates.h"
#include "notify/alert_text.h"
#include "settings/settings.h"
#include "settings/settings_file.h"
#include "shell/item_graphics.h"

using namespace checktext;

namespace {

constexpr std::string_view kServerImages = "/update/images/";
constexpr FindingSeverity E = FindingSeverity::Error;
constexpr FindingSeverity W = FindingSeverity::Warning;
constexpr std::string_view kControlCharacters(
    "\x00\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a\x0b\x0c\x0d\x0e\x0f"
    "\x10\x11\x12\x13\x14\x15\x16\x17\x18\x19\x1a\x1b\x1c\x1d\x1e\x1f",
    32);

}  // namespace

std::vector<Verdict> judgePicture(const UpdateItem& item, const ImageReader& images) {
    std::vector<Verdict> out;
    if (!item.graphic || item.graphic->empty()) return out;
    const std::string shown = "GRAPHIC " + quoted(*item.graphic);
    const std::optional<std::string> name = alertPictureName(item);
    if (!name) {
        out.push_back(
            {E, shown + " is not a plain file name: the agent shows the default picture"});
        return out;
    }
    const PictureDecoder decoder = chooseDecoder(*name);
    if (decoder == PictureDecoder::None) {
        out.push_back({E, shown + ": the agent shows only .png and .jpg pictures, this one never"});
        return out;
    }
    if (!images) return out;
    const std::optional<std::string> bytes = images(*name);
    if (!bytes) {
        out.push_back({E, shown + " is not in the images folder"});
    } else if (!looksLikePicture(*bytes)) {
        out.push_back({E, shown + " in the images folder is not a PNG or JPEG file"});
    } else if ((decoder == PictureDecoder::Png) != bytes->starts_with("\x89PNG")) {
        out.push_back({E, shown + " holds a " + (decoder == PictureDecoder::Png ? "JPEG" : "PNG") +
                              " picture: the agent decodes it by its extension and fails"});
    }
    return out;
}

std::vector<Verdict> judgeSettingUpdate(std::string_view plainText) {
    std::vector<Verdict> out;
    const SettingAssignment a = parseSettingAssignment(plainText);
    const SettingDef* def = findSettingNoCase(a.name);
    if (!def) {
        std::vector<std::string_view> names;
        for (const SettingDef& d : SettingsTable) names.push_back(d.key);
        auto near = nearest(a.name, names, 3);
        out.push_back({E, quoted(a.name) + " is not a setting" +
                              (near ? " (did you mean " + std::string(*near) + "?)" : "") +
                              ": the agent ignores this update"});
        return out;
    }
    const std::string name = def->key;
    Settings scratch;
    if (!applySettingUpdate(scratch, a.name, a.value)) {
        out.push_back({E, name + " may not be changed by the feed: the agent ignores this update"});
        return out;
    }
    const std::string_view value = trimmed(a.value);
    if (value.empty()) {
        out.push_back({E, name + " has no value: the agent ignores this update"});
        return out;
    }
    if (def->readFlags & kSettingSkipOnRead)
        out.push_back(
            {W, name + " is the program's own: a change lasts only until the agent exits"});
    if (def->isNumeric()) {
        const uint32_t stored = *settingNumber(scratch, *def);
        if (!isPlainInteger(value)) {
            out.push_back(
                {startsWithNumber(value) ? W : E, name + " takes a number: " + quoted(value) +
                                                      " sets it to " + std::to_string(stored)});
        } else if ((def->typeFlags & kSettingFlag) && atoiLike(value) != 0 &&
                   atoiLike(value) != 1) {
            out.push_back({W, name + " is 0 or 1: " + std::string(value) + " sets it to 1"});
        } else if ((def->typeFlags & kSettingColour) && stored > 0xFFFFFF) {
            out.push_back({W, name + " is a colour, at most 16777215 (0x00BBGGRR)"});
        }
    } else {
        // A line end after the text is harmless; one inside it would have
        // begun a line of its own in the settings file.
        const std::string_view stored = storableSettingText(def->key, a.value);
        if (value.find_first_of(kControlCharacters) != std::string_view::npos)
            out.push_back({E, name + " holds a line break or other control character: the "
                                     "agent saves only the text before it"});
        else if (stored.size() < value.size())
            out.push_back({E, name +
                                  " is too long for the settings file: the agent saves only "
                                  "its first " +
                                  std::to_string(stored.size()) + " characters"});
    }
    return out;
}

std::vector<Verdict> judgeGraphicUpdateUrl(const std::string& url, const ImageReader& images) {
    std::vector<Verdict> out;
    const std::string shown = "URL " + quoted(url);
    const std::optional<GraphicFileName> file = graphicFileName(url);
    if (!file) {
        out.push_back({E, shown + " names no file the agent may write: it skips this update"});
        return out;
    }
    if (pictureKindOf(file->extension) == PictureKind::None) {
        out.push_back({E, shown + " names no picture (.png, .jpg, .jpeg, .bmp or .gif): the "
                                  "agent replaces only pictures and skips this update"});
        return out;
    }
    if (!url.starts_with('/')) {
        out.push_back({W, shown + " is not a path on the update server (such as " +
                              std::string(kServerImages) + "NAME)"});
        return out;
    }
    if (!images || !url.starts_with(kServerImages)) return out;
    const std::string name = url.substr(kServerImages.size());
    if (name == file->name + file->extension && !images(name))
        out.push_back({E, shown + " is not in the images folder"});
    return out;
}
