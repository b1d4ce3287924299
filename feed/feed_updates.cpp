// Setting and graphic updates carried by the feed (see feed_updates.h).
#include "feed/feed_updates.h"

#include <array>
#include <cstdio>

#include "base/ascii.h"
#include "base/crt_text.h"
#include "base/file_io.h"
#include "base/file_names.h"
#include "feed/document_file.h"

namespace {

// Settings that name a file or a program the agent opens or starts. A feed
// fetched over plain HTTP could otherwise make the agent start a program of
// an attacker's choosing or reach out to a network share.
constexpr std::array<std::string_view, 4> kFeedProtectedSettings = {
    "DocumentBrowserPath", "ApplicationPath", "ChangeFolderSound", "ColourTableFile"};

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

bool isForbiddenInFileName(unsigned char c) {
    return c < 32 || c == 127 ||
           std::string_view("<>:\"/\\|?*").find(static_cast<char>(c)) != std::string_view::npos;
}

}  // namespace

bool applySettingUpdate(Settings& settings, std::string_view name, std::string_view value) {
    const SettingDef* def = findSettingNoCase(name);
    if (!def) return false;
    for (std::string_view protectedName : kFeedProtectedSettings)
        if (protectedName == def->key) return false;
    // An empty value is ignored: "PromptMultipleCount =" must not turn the
    // threshold into 0 and make the prompt appear on every run.
    if (value.find_first_not_of(" \t") == std::string_view::npos) return true;

    if ((def->typeFlags & kSettingFlag) && def->number) {
        settings.*(def->number) = atoiLike(value) != 0 ? 1 : 0;
    } else if ((def->typeFlags & kSettingInteger) && def->number) {
        settings.*(def->number) = static_cast<uint32_t>(atoiLike(value));
    } else if ((def->typeFlags & kSettingText) && def->text) {
        settings.*(def->text) = std::string(value.substr(0, kSettingTextMax));
    }
    return true;
}

SettingAssignment parseSettingAssignment(std::string_view text) {
    std::size_t pos = 0;
    while (pos < text.size() && pos < kSettingTextMax) {
        unsigned char c = static_cast<unsigned char>(text[pos]);
        if (c < 33 || c == 127 || c == '=') break;
        ++pos;
    }
    SettingAssignment assignment;
    assignment.name = std::string(text.substr(0, pos));
    while (pos < text.size() && (isBlank(text[pos]) || text[pos] == '=')) ++pos;
    assignment.value = std::string(text.substr(pos));
    return assignment;
}

void performSettingUpdate(UpdateItem& item, Settings& settings, SeenList& seen) {
    if (!item.plainText) return;
    SettingAssignment assignment = parseSettingAssignment(*item.plainText);
    applySettingUpdate(settings, assignment.name, assignment.value);
    seen.markItemSeen(item);
}

std::optional<GraphicFileName> graphicFileName(std::string_view url) {
    std::size_t slash = url.find_last_of("/\\");
    std::string_view name = slash == std::string_view::npos ? url : url.substr(slash + 1);
    // Windows ignores trailing dots and blanks of a name: "logo.png. " is
    // "logo.png", and ".." would be the parent folder.
    while (!name.empty() && (name.back() == '.' || name.back() == ' ')) name.remove_suffix(1);
    if (name.empty()) return std::nullopt;
    for (char c : name)
        if (isForbiddenInFileName(static_cast<unsigned char>(c))) return std::nullopt;

    // "nul.tar.gz" and "CON .png" are devices too.
    if (isDeviceFileName(name)) return std::nullopt;

    std::size_t dot = name.rfind('.');
    if (dot == 0) return std::nullopt;  // ".png": no name at all
    GraphicFileName result;
    result.name = std::string(name.substr(0, dot));
    if (dot != std::string_view::npos) result.extension = std::string(name.substr(dot));
    return result;
}

PictureKind pictureKindOf(std::string_view extension) {
    static constexpr std::pair<std::string_view, PictureKind> kinds[] = {
        {".png", PictureKind::Png},
        {".jpg", PictureKind::Jpeg},
        {".jpeg", PictureKind::Jpeg},
        {".bmp", PictureKind::Bmp},
        {".gif", PictureKind::Gif}};
    for (const auto& [suffix, kind] : kinds)
        if (equalsIgnoringAsciiCase(extension, suffix)) return kind;
    return PictureKind::None;
}

bool beginsLikePicture(std::string_view body, PictureKind kind) {
    switch (kind) {
        case PictureKind::Png:
            return body.starts_with("\x89PNG\r\n\x1A\n");
        case PictureKind::Jpeg:
            return body.starts_with("\xFF\xD8\xFF");
        case PictureKind::Bmp:
            return body.starts_with("BM");
        case PictureKind::Gif:
            return body.starts_with("GIF87a") || body.starts_with("GIF89a");
        case PictureKind::None:
            break;
    }
    return false;
}

void performGraphicUpdate(UpdateItem& item, RunHost& host, SeenList& seen) {
    if (!item.url) return;
    // A refused name is treated as a download that failed: nothing is fetched.
    // Only pictures are replaced: the program's own files (the seen list, the
    // settings, the colour table) carry no picture extension, so no update can
    // reach them, and no program or script is ever written.
    std::optional<GraphicFileName> file = graphicFileName(*item.url);
    if (!file) return;
    const PictureKind kind = pictureKindOf(file->extension);
    if (kind == PictureKind::None) return;

    // Without the product folder a bare name would land in the current folder.
    std::string folder = host.graphicFolder();
    if (folder.empty()) return;
    if (folder.back() != '\\' && folder.back() != '/') folder += '\\';

    WaitCursorScope wait(host);
    std::optional<std::string> body = host.fetchServerFile(*item.url);
    // An error page or an empty reply is no picture: kept under the picture's
    // name it would stand for it for good.
    if (!body || !beginsLikePicture(*body, kind)) return;

    const std::string target = folder + file->name + file->extension;
    const std::string temporary = target + ".temp";

    std::remove(temporary.c_str());
    bool ok = writeHandleToFile(temporary, *body);
    if (ok) {
        ok = replaceFileWith(temporary, target);
        if (!ok) std::remove(temporary.c_str());
    }
    if (!ok) {
        std::string message = "There has been an error upgrading the new graphic " + file->name +
                              file->extension + ".";
        host.showMessage(message);
        return;
    }
    seen.markItemSeen(item);
}
