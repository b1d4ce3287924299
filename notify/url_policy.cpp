// Which addresses the notification windows open (see url_policy.h).
#include "notify/url_policy.h"

#include "base/ascii.h"

bool isWebAddress(std::string_view url) {
    for (std::string_view scheme : {std::string_view("http://"), std::string_view("https://")}) {
        if (url.size() >= scheme.size() &&
            equalsIgnoringAsciiCase(url.substr(0, scheme.size()), scheme))
            return true;
    }
    return false;
}
