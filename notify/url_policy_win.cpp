// Go in the notification windows (see url_policy_win.h).
#include "notify/url_policy_win.h"

#include <utility>

#include <shellapi.h>  // after windows.h; the lean build leaves it out

#include "notify/url_policy.h"
#include "ui/message_box_win.h"

namespace {

constexpr char kBrowserError[] = "There has been an error accessing your web browser.";

bool shellOpen(HWND owner, const std::string& url, const std::string& folder) {
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteA(owner, "open", url.c_str(), nullptr,
                      folder.empty() ? nullptr : folder.c_str(), SW_SHOWNORMAL));
    return result > 32;
}

WebAddressOpener& opener() {
    static WebAddressOpener current = shellOpen;
    return current;
}

}  // namespace

WebAddressOpener setWebAddressOpener(WebAddressOpener next) {
    WebAddressOpener previous = std::move(opener());
    opener() = next ? std::move(next) : WebAddressOpener(shellOpen);
    return previous;
}

void openItemAddress(HWND owner, const std::string& url, const std::string& folder) {
    if (!isWebAddress(url)) return;
    if (!opener()(owner, url, folder)) showMessage(owner, kBrowserError);
}
