// The kept copy's file format: a short text header, then the document's bytes
// as they came. The header holds the validators, the text's length and a
// checksum of it, so that a copy cut short by a crash, or changed on disk, is
// seen as damaged rather than read as a shorter or different document.
#include "feed/kept_document.h"

#include <charconv>
#include <cstdint>
#include <cstdio>

#include "feed/http_reply.h"

namespace {

constexpr std::string_view kMagic = "Quenmark Heralder kept document 1\n";
constexpr std::size_t kMaxValidator = 1024;

// FNV-1a 64: not a defence against anyone who can write the user's files
// (they could write the document too), only against damage.
uint64_t checksum(std::string_view text) {
    uint64_t hash = 14695981039346656037ull;
    for (unsigned char c : text) hash = (hash ^ c) * 1099511628211ull;
    return hash;
}

// Reads "Name: value\n" from the front of rest; nullopt unless it is there.
std::optional<std::string_view> takeField(std::string_view& rest, std::string_view name) {
    if (rest.substr(0, name.size()) != name || rest.substr(name.size(), 2) != ": ")
        return std::nullopt;
    rest.remove_prefix(name.size() + 2);
    const std::size_t end = rest.find('\n');
    if (end == std::string_view::npos) return std::nullopt;
    std::string_view value = rest.substr(0, end);
    rest.remove_prefix(end + 1);
    return value;
}

template <typename T>
std::optional<T> number(std::string_view text, int base) {
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

}  // namespace

bool isUsableValidator(std::string_view value) {
    if (value.empty() || value.size() > kMaxValidator) return false;
    for (unsigned char c : value)
        if (c < 0x20 || c == 0x7f) return false;
    return true;
}

std::string formatKeptDocument(const KeptDocument& kept) {
    char sum[17];
    std::snprintf(sum, sizeof sum, "%016llx", static_cast<unsigned long long>(checksum(kept.text)));
    // A validator that could not be sent back is not worth keeping.
    const auto usable = [](const std::string& v) { return isUsableValidator(v) ? v : ""; };
    std::string file(kMagic);
    file += "ETag: " + usable(kept.etag) + "\n";
    file += "Last-Modified: " + usable(kept.lastModified) + "\n";
    file += "Length: " + std::to_string(kept.text.size()) + "\n";
    file += "Checksum: " + std::string(sum) + "\n\n";
    file += kept.text;
    return file;
}

std::optional<KeptDocument> parseKeptDocument(std::string_view file) {
    if (file.substr(0, kMagic.size()) != kMagic) return std::nullopt;
    std::string_view rest = file.substr(kMagic.size());
    const auto etag = takeField(rest, "ETag");
    const auto lastModified = etag ? takeField(rest, "Last-Modified") : std::nullopt;
    const auto lengthText = lastModified ? takeField(rest, "Length") : std::nullopt;
    const auto sumText = lengthText ? takeField(rest, "Checksum") : std::nullopt;
    if (!sumText || rest.substr(0, 1) != "\n") return std::nullopt;
    rest.remove_prefix(1);
    for (std::string_view value : {*etag, *lastModified})
        if (!value.empty() && !isUsableValidator(value)) return std::nullopt;

    const auto length = number<std::size_t>(*lengthText, 10);
    const auto sum = sumText->size() == 16 ? number<uint64_t>(*sumText, 16) : std::nullopt;
    if (!length || !sum || *length > maxContentLength || rest.size() != *length ||
        checksum(rest) != *sum)
        return std::nullopt;
    return KeptDocument{std::string(rest), std::string(*etag), std::string(*lastModified)};
}

bool isConditionalRequest(const KeptDocument* kept) {
    return kept && (isUsableValidator(kept->etag) || isUsableValidator(kept->lastModified));
}

std::string documentRequestHeaders(const KeptDocument* kept) {
    std::string headers = "Accept-Encoding: gzip, deflate\r\n";
    if (kept && isUsableValidator(kept->etag)) headers += "If-None-Match: " + kept->etag + "\r\n";
    if (kept && isUsableValidator(kept->lastModified))
        headers += "If-Modified-Since: " + kept->lastModified + "\r\n";
    return headers;
}

DocumentReply judgeDocumentReply(unsigned status, bool conditional) {
    if (status != 304) return DocumentReply::Body;
    return conditional ? DocumentReply::KeptCopy : DocumentReply::Failed;
}
