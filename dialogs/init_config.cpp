// The first-run sign-up's words and decisions (see init_config.h).
#include "dialogs/init_config.h"

#include "feed/http_reply.h"
#include "settings/file_locations.h"

const char* const kInitConfigText =
    "Sign up with Heralder...\n"
    "\n"
    "The Quenmark Heralder notification agent can alert you when new versions of Quenmark' "
    "products are available. It also brings you tips, notices and the occasional important alert "
    "about the software you use.\n"
    "\n"
    "Heralder is optional, and it is free. It reads a short news file from the Quenmark web "
    "server; it sends nothing about you or your computer.\n"
    "\n"
    "If you wish, Heralder can run every morning when your computer starts. It stays out of "
    "sight, and pops up a small window only when it finds news for you.\n"
    "\n"
    "Heralder is fully configurable: you choose which kinds of news it shows and how it looks "
    "and sounds, and you can disable it altogether.\n"
    "\n"
    "Select Start > Programs > Quenmark > Heralder at any time to configure Heralder.\n"
    "\n"
    "Quenmark also sends out an e-mail newsletter. To subscribe, enable the E-mail update list "
    "option at the right.\n"
    "\n"
    "IMPORTANT: The first time Heralder runs, it will probably have a lot of news to catch up "
    "with. It will prompt you to step through these windows, or ignore the pending items, as you "
    "prefer.";

namespace {

constexpr char kOldInstallationXp[] =
    "There is an earlier installation of Heralder installed on your system.\n\nPlease open the "
    "Add or Remove Programs option in the Windows Control Panel and uninstall QMK Heralder.";
constexpr char kOldInstallationOther[] =
    "There is an earlier installation of Heralder installed on your system.\n\nPlease open the "
    "Programs and Features option in the Windows Control Panel and uninstall QMK Heralder.";
constexpr uint32_t kPlatformXp = 12;

}  // namespace

std::string newsletterAddress(std::string_view host) {
    std::string address = serverLinkBase(host);
    address += "/update-list.html";
    return address;
}

std::string oldInstallationProgramPath(std::string_view applicationPath) {
    if (applicationPath.empty()) return {};
    std::string path(applicationPath);
    if (path.back() != '\\') path += '\\';
    path += kOldInstallationProgram;
    if (path.size() > kMaxPathChars) path.resize(kMaxPathChars);
    return path;
}

const char* oldInstallationMessage(uint32_t platformCode) {
    return platformCode == kPlatformXp ? kOldInstallationXp : kOldInstallationOther;
}

bool settleInitConfig(Settings& record, int result, uint32_t option) {
    record.InitConfigDone = 1;
    if (result != 1) return false;
    record.StartupOptions = option;
    return true;
}
