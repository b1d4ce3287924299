#pragma once
// Go in the notification windows: the item's address opened by the shell, if
// it is a web address (see url_policy.h). The tests put their own opener in
// place of the shell, so that no test ever starts a real browser.
#include <functional>
#include <string>

#include "base/win_headers.h"

// Opens url with the shell's "open" verb, folder as working folder; true when
// the shell started something.
using WebAddressOpener =
    std::function<bool(HWND owner, const std::string& url, const std::string& folder)>;

// Replaces the opener (an empty one restores the shell's); returns the previous.
WebAddressOpener setWebAddressOpener(WebAddressOpener opener);

// Nothing for an address that is not a web address. When the opener fails the
// user is told "There has been an error accessing your web browser.".
void openItemAddress(HWND owner, const std::string& url, const std::string& folder);
