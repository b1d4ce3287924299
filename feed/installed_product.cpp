// Installed product lookup, the portable part (see installed_product.h).
#include "feed/installed_product.h"

#include <cstdio>

#include "settings/file_locations.h"

namespace {

std::string withBackslash(std::string path) {
    if (!path.empty() && path.back() != '\\') path += '\\';
    return path;
}

// Fields of a packed version.
uint32_t majorOf(uint32_t packed) { return (packed >> 5) & 31; }
uint32_t minorOf(uint32_t packed) { return (packed >> 10) & 31; }
uint32_t letterOf(uint32_t packed) { return packed & 31; }

}  // namespace

std::string installedVersionText(uint32_t versionNumber, uint32_t patchLevel, uint32_t betaLevel) {
    char text[96];
    int n = std::snprintf(text, sizeof text, "%d.%d%c", static_cast<int>(majorOf(versionNumber)),
                          static_cast<int>(minorOf(versionNumber)),
                          static_cast<char>('a' + letterOf(versionNumber)));
    std::string result(text, static_cast<std::size_t>(n));
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

std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem& item,
                                                       ProductFiles& files) {
    if (!item.iniFile) return std::nullopt;
    const std::string& name = *item.iniFile;

    // Products announced from version 4 on keep their file for all users.
    std::optional<std::string> maker = files.makerFolder(item.version >= 4);
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
