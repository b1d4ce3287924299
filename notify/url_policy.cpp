// Which item addresses may be opened (see url_policy.h).
#include "notify/url_policy.h"

#include "base/ascii.h"

namespace {

bool startsWithIgnoringCase(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() &&
           equalsIgnoringAsciiCase(text.substr(0, prefix.size()), prefix);
}

}  // namespace

bool isOpenableAddress(std::string_view url) {
    return startsWithIgnoringCase(url, "http://") || startsWithIgnoringCase(url, "https://");
}
