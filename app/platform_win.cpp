// The running Windows release and the "not compatible" dialog. RtlGetVersion
// is looked up at run time: it is the one version service that a
// compatibility shim does not make lie, and a missing ntdll export simply
// means "unknown". Windows 11 still calls itself 10.0, so its build number is
// read from the registry.
#include "app/platform_win.h"

#include <cstring>

#include "base/win_handles.h"
#include "resources/resource.h"
#include "shell/browser_win.h"
#include "ui/dialog_win.h"

namespace {

using RtlGetVersionFn = LONG(WINAPI*)(OSVERSIONINFOEXW*);

static_assert(sizeof(OSVERSIONINFOEXW) == 284, "the extended version record");

constexpr char kPublisherHome[] = "http://www.quenmark.com/";
constexpr std::size_t kMaxFormattedText = 1024;

std::optional<OsVersion> runningVersion() {
    UniqueModule ntdll(LoadLibraryA("ntdll.dll"));
    if (!ntdll) return std::nullopt;
    // Through void*: FARPROC and the real signature are unrelated function types.
    auto rtlGetVersion = reinterpret_cast<RtlGetVersionFn>(
        reinterpret_cast<void*>(GetProcAddress(ntdll.get(), "RtlGetVersion")));
    if (!rtlGetVersion) return std::nullopt;
    OSVERSIONINFOEXW record{};
    record.dwOSVersionInfoSize = sizeof record;
    if (rtlGetVersion(&record) != 0) return std::nullopt;  // STATUS_SUCCESS
    return OsVersion{record.dwMajorVersion, record.dwMinorVersion, record.wServicePackMajor};
}

std::string currentBuildText() {
    UniqueKey key;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", 0,
                      KEY_QUERY_VALUE, key.put()) != ERROR_SUCCESS)
        return {};
    char text[64] = {};
    DWORD type = 0, size = sizeof text - 1;
    if (RegQueryValueExA(key.get(), "CurrentBuild", nullptr, &type, reinterpret_cast<BYTE*>(text),
                         &size) != ERROR_SUCCESS ||
        type != REG_SZ)
        return {};
    return std::string(text, strnlen(text, size));
}

class IncompatiblePlatformBox : public Dialog {
  public:
    IncompatiblePlatformBox(const char* productName, const Settings& settings)
        : productName_(productName), settings_(settings) {}

  private:
    BOOL onInitDialog() override {
        formatText();
        fitText();
        MessageBeep(MB_ICONEXCLAMATION);
        return focusAndCentre();
    }

    void onCommand(int id, UINT, HWND) override {
        if (id == IDC_BUTTON1) {
            launchBrowser(hwnd(), settings_, kPublisherHome, nullptr, true);
            end(IDC_BUTTON1);
        } else if (id == IDC_CANCELBUTTON) {
            end(IDC_CANCELBUTTON);
        }
    }

    // The template's "%s" becomes the product name, unless the result would
    // not fit the program's 1024-character buffer.
    void formatText() {
        char pattern[kMaxFormattedText] = {};
        GetDlgItemTextA(hwnd(), IDC_INCOMPATIBLE_TEXT, pattern, sizeof pattern);
        std::string text = pattern;
        const std::size_t at = text.find("%s");
        if (at == std::string::npos) return;
        text.replace(at, 2, productName_ ? productName_ : "");
        if (text.size() < kMaxFormattedText)
            SetDlgItemTextA(hwnd(), IDC_INCOMPATIBLE_TEXT, text.c_str());
    }

    // A long product name or a large font needs more lines than the template
    // has room for: grow the text and the box downwards rather than clip.
    void fitText() {
        HWND control = item(IDC_INCOMPATIBLE_TEXT);
        RECT r = clientRectOf(hwnd(), IDC_INCOMPATIBLE_TEXT);
        char text[kMaxFormattedText] = {};
        GetWindowTextA(control, text, sizeof text);
        WindowDc dc(control);
        ScopedSelect font(dc.get(),
                          reinterpret_cast<HGDIOBJ>(SendMessageA(control, WM_GETFONT, 0, 0)));
        RECT need{0, 0, r.right - r.left, 0};
        DrawTextA(dc.get(), text, -1, &need,
                  DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS);
        const int extra = (need.bottom - need.top) - (r.bottom - r.top);
        if (extra <= 0) return;
        r.bottom += extra;
        moveChild(hwnd(), IDC_INCOMPATIBLE_TEXT, r);
        RECT box;
        GetWindowRect(hwnd(), &box);
        SetWindowPos(hwnd(), nullptr, 0, 0, box.right - box.left, box.bottom - box.top + extra,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }

    const char* productName_;
    const Settings& settings_;
};

}  // namespace

uint32_t getPlatformCode(std::string* name) {
    const Platform platform = platformFromVersion(runningVersion(), currentBuildText);
    if (name) *name = platform.name;
    return platform.code;
}

bool isPlatformSupported(const uint32_t* selector) {
    return isPlatformSelected(getPlatformCode(), selector);
}

INT_PTR showIncompatiblePlatformBox(HWND owner, const char* productName, const Settings& settings) {
    IncompatiblePlatformBox box(productName, settings);
    return box.runModal(owner, MAKEINTRESOURCEA(IDD_INCOMPATIBLE));
}
