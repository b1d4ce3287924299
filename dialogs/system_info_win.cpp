// System information (see system_info_win.h). Gathering asks the system the
// same questions the program's own code asks, so the report shows what the
// agent itself sees: the folders it would use, WinINet's preconfigured proxy,
// the product files the notification windows would read.
#include "dialogs/system_info_win.h"

#include <cstdint>

#include "base/file_io.h"
#include "base/win_handles.h"
#include "dialogs/about_text.h"
#include "feed/feed_trust_win.h"
#include "feed/http_win.h"
#include "feed/installed_product.h"
#include "feed/seen_list.h"
#include "resources/resource.h"
#include "settings/file_locations_win.h"
#include "settings/settings_file.h"
#include "ui/dialog_win.h"
#include "ui/soft_button_win.h"

namespace {

constexpr char kSeenListName[] = "Heralder.lst";

FileFacts fileFacts(const std::string& path) {
    FileFacts facts;
    facts.path = path;
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (path.empty() || !GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return facts;
    facts.exists = true;
    facts.size = (static_cast<uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    FILETIME local;
    SYSTEMTIME t;
    if (FileTimeToLocalFileTime(&data.ftLastWriteTime, &local) && FileTimeToSystemTime(&local, &t))
        facts.modified = ReportTime{t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond};
    return facts;
}

// The proxy WinINet would use for a fetch: the same preconfigured session
// the fetch opens.
ProxyFacts proxyFacts() {
    ProxyFacts facts;
    UniqueInternet internet(
        InternetOpenA("Quenmark Heralder", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0));
    if (!internet) return facts;
    // INTERNET_PROXY_INFO with its strings after it, in one aligned block.
    alignas(INTERNET_PROXY_INFO) char buffer[4096] = {};
    DWORD size = sizeof buffer - 1;
    if (!InternetQueryOptionA(internet.get(), INTERNET_OPTION_PROXY, buffer, &size)) return facts;
    const auto* info = reinterpret_cast<const INTERNET_PROXY_INFO*>(buffer);
    facts.known = true;
    facts.direct = info->dwAccessType == INTERNET_OPEN_TYPE_DIRECT;
    if (info->lpszProxy) facts.proxy = reinterpret_cast<const char*>(info->lpszProxy);
    if (info->lpszProxyBypass) facts.bypass = reinterpret_cast<const char*>(info->lpszProxyBypass);
    return facts;
}

// Every section of the INI files in folder that records a product version.
void addProducts(const std::optional<std::string>& folder, std::vector<ProductFacts>& products) {
    if (!folder || folder->empty()) return;
    WIN32_FIND_DATAA found;
    UniqueFind search(FindFirstFileA((*folder + "*.ini").c_str(), &found));
    if (!search) return;
    do {
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) continue;
        const std::string path = *folder + found.cFileName;
        std::string sections(32767, '\0');
        const DWORD n = GetPrivateProfileSectionNamesA(
            sections.data(), static_cast<DWORD>(sections.size()), path.c_str());
        sections.resize(n);
        for (std::size_t start = 0; start < sections.size();) {
            const std::size_t end = sections.find('\0', start);
            const std::string section =
                sections.substr(start, end == std::string::npos ? std::string::npos : end - start);
            start = end == std::string::npos ? sections.size() : end + 1;
            if (section.empty()) continue;
            char value[32] = {};
            GetPrivateProfileStringA(section.c_str(), "VersionNumber", "", value, sizeof value,
                                     path.c_str());
            if (!value[0]) continue;
            auto number = [&](const char* key) {
                return static_cast<uint32_t>(
                    GetPrivateProfileIntA(section.c_str(), key, 0, path.c_str()));
            };
            products.push_back({path, section,
                                installedVersionText(number("VersionNumber"), number("PatchLevel"),
                                                     number("BetaLevel"))});
        }
    } while (FindNextFileA(search.get(), &found));
}

class SystemInfoDialog : public Dialog {
  public:
    SystemInfoDialog(const std::string& report, uint32_t softButtons)
        : report_(report), softButtons_(softButtons) {}

  protected:
    BOOL onInitDialog() override {
        makeSoftButtons(hwnd(), softButtons_, {IDC_BUTTON1, IDC_SYSINFO_COPY});
        // Fixed pitch, so that the report's columns line up as they will
        // where it is pasted.
        WindowDc dc(hwnd());
        const int height = -MulDiv(9, GetDeviceCaps(dc.get(), LOGPIXELSY), 72);
        reportFont_.reset(CreateFontA(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET,
                                      OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                                      FIXED_PITCH | FF_MODERN, "Courier New"));
        SetWindowFont(item(IDC_SYSINFO_REPORT), reportFont_.get(), FALSE);
        SetDlgItemTextA(hwnd(), IDC_SYSINFO_REPORT, report_.c_str());
        return focusAndCentre();
    }

    void onCommand(int id, UINT code, HWND) override {
        switch (id) {
            case IDC_BUTTON1:
                end(1);
                break;
            case IDC_CANCELBUTTON:
                end(0);
                break;
            case IDC_SYSINFO_COPY:
                if (code == BN_CLICKED) copyTextToClipboard(hwnd(), report_);
                break;
        }
    }

    bool onMessage(UINT msg, WPARAM wp, LPARAM lp, INT_PTR& result) override {
        switch (msg) {
            case WM_COPY:  // Ctrl+C anywhere but in the report itself
                copyTextToClipboard(hwnd(), report_);
                result = 0;
                return true;
            case WM_CTLCOLORSTATIC:
                // A read-only edit is drawn as a static: keep it on the
                // window colour so the report reads as a document.
                if (reinterpret_cast<HWND>(lp) != item(IDC_SYSINFO_REPORT)) return false;
                SetBkColor(reinterpret_cast<HDC>(wp), GetSysColor(COLOR_WINDOW));
                SetTextColor(reinterpret_cast<HDC>(wp), GetSysColor(COLOR_WINDOWTEXT));
                result = reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_WINDOW));
                return true;
        }
        return false;
    }

  private:
    const std::string& report_;
    uint32_t softButtons_;
    UniqueFont reportFont_;
};

}  // namespace

SystemFacts gatherSystemFacts(const Settings& record, uint32_t platformCode,
                              const std::string& platformName) {
    SystemFacts f;
    f.programVersion = programVersionText();
    f.buildDate = record.BuildDate;
    char program[MAX_PATH] = {};
    const DWORD n = GetModuleFileNameA(nullptr, program, MAX_PATH);
    f.programFile.assign(program, n < MAX_PATH ? n : 0);
    f.platformName = platformName;
    f.platformCode = platformCode;
    f.screenWidth = GetSystemMetrics(SM_CXSCREEN);
    f.screenHeight = GetSystemMetrics(SM_CYSCREEN);
    {
        WindowDc screen(nullptr);
        f.dpi = GetDeviceCaps(screen.get(), LOGPIXELSX);
    }
    f.programFolder = record.ApplicationPath;
    f.dataFolder = getUserDataPath("");
    f.productFolder = getUserHeralderPath("");

    const std::string settingsPath = getUserDataPath(kSettingsFileName);
    f.settingsFile = fileFacts(settingsPath);
    if (!settingsPath.empty()) {
        f.settingsBackup = fileFacts(backupPathFor(settingsPath));
        f.settingsOlderBackup = fileFacts(backupPathFor(backupPathFor(settingsPath)));
    }
    f.seenList = fileFacts(getUserHeralderPath(kSeenListName));
    if (f.seenList.exists)
        if (std::optional<std::string> bytes = readFileBytes(f.seenList.path))
            f.seenEntries = parseSeenNumbers(*bytes).size();

    f.serverHost = publisherServerHost();
    f.documentSignature = signatureStatusText();
    f.proxy = proxyFacts();
    addProducts(getUserQuenmarkFolder(), f.products);
    addProducts(getCommonQuenmarkFolder(), f.products);
    return f;
}

int showSystemInfo(HWND owner, const std::string& report, const Settings& settings) {
    SystemInfoDialog dialog(report, settings.SoftButtons);
    const INT_PTR result = dialog.runModal(owner, "SystemInfoBox");
    return result == 1 ? 1 : 0;
}
