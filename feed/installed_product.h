#pragma once
// Which version of one of the publisher's products is installed. Each product
// records its version in its own INI file under "Quenmark" in an
// application-data folder (per-user for products announced below version 4,
// all-users from 4 on) or, for old products, in the Windows folder. Finding
// the file is portable logic over a small platform interface, so the search
// order and its limits are tested natively; the Windows side only answers
// the four questions.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "feed/update_item.h"

struct InstalledVersion {
    uint32_t versionNumber = 0;  // packed like VersionNumber; 0 means not installed
    uint32_t patchLevel = 0;
    uint32_t betaLevel = 0;
    std::string text;  // "17.0a (revision 2)"
};

// "%d.%d%c" of the packed version, then " (revision %d)" when patch is not 0 and
// " (beta %d)" when beta is not 0.
std::string installedVersionText(uint32_t versionNumber, uint32_t patchLevel, uint32_t betaLevel);

// platformFolder + "\" (when missing) + "Quenmark" cut at 260 characters, then a
// final "\" when missing.
std::string makerFolderPath(std::string_view platformFolder);

// What the lookup needs from the platform.
class ProductFiles {
  public:
    virtual ~ProductFiles() = default;
    // The maker folder with its final "\", all-users or per-user; nullopt when
    // the platform folder cannot be had.
    virtual std::optional<std::string> makerFolder(bool allUsers) = 0;
    virtual std::optional<std::string> windowsFolder() = 0;
    virtual bool fileExists(const std::string& path) = 0;
    // The value as the platform's profile reader gives it, 0 when absent.
    virtual uint32_t readProfileNumber(const std::string& file, const std::string& section,
                                       const char* key) = 0;
};

// The installed version of the product an item names with INIFILE and SECTION;
// nullopt when the item lacks either or a path would pass 260 characters. A file
// or section that does not exist gives zeros ("0.0a").
std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem& item, ProductFiles& files);

// All that the lookup reads of an item: the all-users folder or not, INIFILE
// and SECTION. Items with the same key have the same installed version, so a
// run can ask once for each.
using InstalledProductKey = std::tuple<bool, ItemText, ItemText>;
InstalledProductKey installedProductKey(const UpdateItem& item);

// Windows only: the same over the real folders and profile reader.
std::optional<std::string> getUserQuenmarkFolder();
std::optional<std::string> getCommonQuenmarkFolder();
std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem& item);
