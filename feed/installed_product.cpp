// Installed product lookup, the portable part (see installed_product.h).
#include "feed/installed_product.h"

#include <cstdio>

#include "base/file_names.h"
#include "feed/feed_date.h"
#include "settings/file_locations.h"

namespace {

std::string withBackslash(std::string path) {
    if (!path.empty() && path.back() != '\\') path += '\\';
    return path;
}

}  // namespace

std::string installedVersionText(uint32_t versionNumber, uint32_t patchLevel, uint32_t betaLevel) {
    std::string result = packedVersionText(versionNumber);
    char text[48];
    // The profile reader hands back unsigned values; they are shown signed.
    if (patchLevel != 0) {
        std::snprintf(text, sizeof text, " (revision %d)", static_cast<int32_t>(patchLevel));
        result += text;
    }
    if (betaLevel != 0) {
        std::snprintf(text, sizeof text, " (beta %d)", static_cast<int32_t>(betaLevel));
        result += text;
    }
    return result;
}

std::string makerFolderPath(std::string_view platformFolder) {
    std::string path(platformFolder);
    if (path.empty() || path.back() != '\\') path += '\\';
    path += kMakerFolder;
    if (path.size() > kMaxPathChars) path.resize(kMaxPathChars);
    if (path.back() != '\\') path += '\\';
    return path;
}

InstalledProductKey installedProductKey(const UpdateItem& item) {
    // Products announced from version 4 on keep their file for all users.
    return {item.version >= 4, item.iniFile, item.section};
}

std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem& item,
                                                       ProductFiles& files) {
    if (!item.iniFile) return std::nullopt;
    const std::string& name = *item.iniFile;
    // The name comes from the feed; a device would be opened instead of a file
    // (a serial port can block the reader for good), so it counts as absent.
    if (pathNamesDevice(name)) return std::nullopt;

    std::optional<std::string> maker = files.makerFolder(std::get<0>(installedProductKey(item)));
    std::string path;
    if (maker) {
        std::string folder = withBackslash(maker->substr(0, kMaxPathChars));
        if (folder.size() + name.size() > kMaxPathChars) return std::nullopt;
        path = folder + name;
    }
    // Without a maker folder there is nothing to look in but the Windows folder;
    // a bare name would be looked for in whatever the current folder happens to be.
    if (!maker || !files.fileExists(path)) {
        std::optional<std::string> windows = files.windowsFolder();
        if (!windows) return std::nullopt;
        std::string folder = withBackslash(*windows);
        if (folder.size() + name.size() > kMaxPathChars) return std::nullopt;
        path = folder + name;
    }
    if (!item.section) return std::nullopt;

    InstalledVersion found;
    found.versionNumber = files.readProfileNumber(path, *item.section, "VersionNumber");
    found.patchLevel = files.readProfileNumber(path, *item.section, "PatchLevel");
    found.betaLevel = files.readProfileNumber(path, *item.section, "BetaLevel");
    found.text = installedVersionText(found.versionNumber, found.patchLevel, found.betaLevel);
    return found;
}
