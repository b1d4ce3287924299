// Signature lines, key files and the acceptance rules (see feed_signature.h).
// Everything is read strictly: a signature line has one spelling, so that two
// readers can never disagree about which bytes were signed.
#include "feed/feed_signature.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

constexpr char kBase64[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view kPemBegin = "-----BEGIN PUBLIC KEY-----";
constexpr std::string_view kPemEnd = "-----END PUBLIC KEY-----";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The value of "name=" at the front of text up to the next blank (or the end).
std::optional<std::string_view> takeField(std::string_view& text, std::string_view name,
                                          bool last = false) {
    if (!text.starts_with(name)) return std::nullopt;
    text.remove_prefix(name.size());
    const std::size_t end = last ? text.size() : text.find(' ');
    if (end == std::string_view::npos || end == 0) return std::nullopt;
    std::string_view value = text.substr(0, end);
    text.remove_prefix(last ? end : end + 1);
    return value;
}

std::optional<uint64_t> parseSerial(std::string_view text) {
    if (text.empty() || text.size() > 18 || text.front() == '0') return std::nullopt;
    uint64_t value = 0;
    for (char c : text) {
        if (!isDigit(c)) return std::nullopt;
        value = value * 10 + static_cast<uint64_t>(c - '0');
    }
    return value;
}

bool isKeyId(std::string_view text) {
    return text.size() == 16 && std::all_of(text.begin(), text.end(), [](char c) {
               return isDigit(c) || (c >= 'a' && c <= 'f');
           });
}

// Offsets of the lines that begin with the marker.
std::vector<std::size_t> markerLines(std::string_view document) {
    std::vector<std::size_t> found;
    for (std::size_t at = 0; at < document.size();) {
        if (document.substr(at).starts_with(kSignatureMarker)) found.push_back(at);
        const std::size_t next = document.find('\n', at);
        if (next == std::string_view::npos) break;
        at = next + 1;
    }
    return found;
}

// Howard Hinnant's days_from_civil, for the years a signature can name.
int64_t daysFromCivil(int64_t y, unsigned m, unsigned d) {
    y -= m <= 2;
    const int64_t era = y / 400;
    const unsigned yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<int64_t>(doe) - 719468;
}

}  // namespace

const char* signatureProblemText(SignatureProblem problem) {
    switch (problem) {
        case SignatureProblem::None:
            return "valid";
        case SignatureProblem::NoSignature:
            return "no signature";
        case SignatureProblem::Malformed:
            return "malformed signature";
        case SignatureProblem::NotAtEnd:
            return "text after the signature";
        case SignatureProblem::SignedTwice:
            return "signed more than once";
        case SignatureProblem::UnknownKey:
            return "unknown key";
        case SignatureProblem::BadSignature:
            return "bad signature";
        case SignatureProblem::Expired:
            return "expired";
        case SignatureProblem::OlderSerial:
            return "older than the last accepted document";
    }
    return "?";
}

SignatureReading readSignatureLine(std::string_view document) {
    SignatureReading reading;
    const std::vector<std::size_t> lines = markerLines(document);
    if (lines.empty()) {
        reading.problem = SignatureProblem::NoSignature;
        return reading;
    }
    reading.lineStart = lines.back();
    std::string_view rest = document.substr(lines.back());
    const std::size_t lineEnd = rest.find_first_of("\r\n");
    std::string_view line = rest.substr(0, lineEnd);
    const std::string_view after = lineEnd == std::string_view::npos ? "" : rest.substr(lineEnd);
    if (lines.size() > 1) {
        reading.problem = SignatureProblem::SignedTwice;
    } else if (after != "" && after != "\n" && after != "\r\n") {
        reading.problem = SignatureProblem::NotAtEnd;
    } else if (line.size() > kMaxSignatureLine) {
        reading.problem = SignatureProblem::Malformed;
    }
    if (reading.problem != SignatureProblem::None) return reading;

    reading.problem = SignatureProblem::Malformed;
    line.remove_prefix(kSignatureMarker.size());
    SignatureLine out;
    std::string_view fields = line;
    if (!fields.starts_with("v1 ")) return reading;
    fields.remove_prefix(3);
    const auto serial = takeField(fields, "serial=");
    const auto expires = takeField(fields, "expires=");
    const auto key = takeField(fields, "key=");
    const auto sig = takeField(fields, "sig=", true);
    if (!serial || !expires || !key || !sig) return reading;
    const auto serialValue = parseSerial(*serial);
    const auto day = isoDateToDay(*expires);
    const auto sigBytes = base64Decode(*sig);
    if (!serialValue || !day || !isKeyId(*key) || !sigBytes || sigBytes->size() != 64)
        return reading;
    // The fields hold no blank, so the first " sig=" is where the value starts.
    out.signedBytes = document.substr(0, reading.lineStart + rest.find(" sig="));
    out.serial = *serialValue;
    out.expires = std::string(*expires);
    out.expiresDay = *day;
    out.keyId = std::string(*key);
    std::copy(sigBytes->begin(), sigBytes->end(), out.signature.begin());
    reading.line = std::move(out);
    reading.problem = SignatureProblem::None;
    return reading;
}

std::string_view unsignedPart(std::string_view document) {
    const std::vector<std::size_t> lines = markerLines(document);
    if (lines.empty()) return document;
    const std::string_view rest = document.substr(lines.back());
    const std::size_t lineEnd = rest.find('\n');
    if (lineEnd != std::string_view::npos && lineEnd + 1 != rest.size()) return document;
    return document.substr(0, lines.back());
}

std::optional<FeedKey> readPublicKeyPem(std::string_view pem) {
    const std::size_t begin = pem.find(kPemBegin);
    if (begin == std::string_view::npos) return std::nullopt;
    const std::size_t bodyStart = begin + kPemBegin.size();
    const std::size_t end = pem.find(kPemEnd, bodyStart);
    if (end == std::string_view::npos) return std::nullopt;
    std::string base64;
    for (char c : pem.substr(bodyStart, end - bodyStart))
        if (c != '\r' && c != '\n' && c != ' ' && c != '\t') base64 += c;
    const auto der = base64Decode(base64);
    if (!der || der->size() != sizeof kP256SpkiPrefix + 65 ||
        !std::equal(std::begin(kP256SpkiPrefix), std::end(kP256SpkiPrefix), der->begin(),
                    [](uint8_t a, char b) { return a == static_cast<uint8_t>(b); }) ||
        static_cast<uint8_t>((*der)[sizeof kP256SpkiPrefix]) != 0x04)
        return std::nullopt;
    FeedKey key;
    std::copy(der->begin() + sizeof kP256SpkiPrefix, der->end(), key.point.begin());
    key.id = feedKeyId(key.point);
    return key;
}

std::string feedKeyId(const std::array<uint8_t, 65>& point) {
    std::string id;
    for (int i = 1; i <= 8; ++i) {
        char hex[3];
        std::snprintf(hex, sizeof hex, "%02x", point[static_cast<std::size_t>(i)]);
        id += hex;
    }
    return id;
}

std::optional<int64_t> isoDateToDay(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    for (std::size_t i : {0, 1, 2, 3, 5, 6, 8, 9})
        if (!isDigit(text[i])) return std::nullopt;
    const auto number = [&](std::size_t at, std::size_t n) {
        unsigned v = 0;
        for (std::size_t i = at; i < at + n; ++i) v = v * 10 + static_cast<unsigned>(text[i] - '0');
        return v;
    };
    const unsigned year = number(0, 4), month = number(5, 2), day = number(8, 2);
    static const unsigned monthDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (year < 2000 || month < 1 || month > 12 || day < 1) return std::nullopt;
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    if (day > monthDays[month - 1] + (month == 2 && leap)) return std::nullopt;
    return daysFromCivil(year, month, day);
}

std::string dayToIsoDate(int64_t day) {
    // civil_from_days, the inverse of daysFromCivil.
    day += 719468;
    const int64_t era = (day >= 0 ? day : day - 146096) / 146097;
    const unsigned doe = static_cast<unsigned>(day - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    const unsigned d = doy - (153 * mp + 2) / 5 + 1;
    const unsigned m = mp < 10 ? mp + 3 : mp - 9;
    const int64_t y = static_cast<int64_t>(yoe) + era * 400 + (m <= 2);
    char text[32];
    std::snprintf(text, sizeof text, "%04lld-%02u-%02u", static_cast<long long>(y), m, d);
    return text;
}

bool expiryPassed(int64_t expiresDay, int64_t today) {
    return today > expiresDay + 1;
}

SignatureVerdict checkFeedSignature(std::string_view document, std::span<const FeedKey> keys,
                                    SignatureVerifier verify, int64_t today,
                                    uint64_t lowestSerial) {
    SignatureVerdict verdict;
    SignatureReading reading = readSignatureLine(document);
    verdict.problem = reading.problem;
    verdict.line = std::move(reading.line);
    if (!verdict.line) return verdict;
    const SignatureLine& line = *verdict.line;
    const auto key = std::find_if(keys.begin(), keys.end(),
                                  [&](const FeedKey& k) { return k.id == line.keyId; });
    if (key == keys.end()) {
        verdict.problem = SignatureProblem::UnknownKey;
    } else if (!verify(*key, line.signedBytes, line.signature)) {
        verdict.problem = SignatureProblem::BadSignature;
    } else {
        verdict.key = &*key;
        if (expiryPassed(line.expiresDay, today))
            verdict.problem = SignatureProblem::Expired;
        else if (line.serial < lowestSerial)
            verdict.problem = SignatureProblem::OlderSerial;
    }
    return verdict;
}

SignatureRecord parseSignatureRecord(std::string_view text) {
    SignatureRecord record;
    bool serialSeen = false;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        const std::size_t eq = line.find('=');
        if (eq == std::string_view::npos) continue;
        const std::string_view name = line.substr(0, eq), value = line.substr(eq + 1);
        if (name == "serial") {
            const auto serial = parseSerial(value);
            if (!serial) return {};
            record.serial = *serial;
            serialSeen = true;
        } else if (name == "expires" && isoDateToDay(value)) {
            record.expires = std::string(value);
        } else if (name == "refused-day" && isoDateToDay(value)) {
            record.refusedDay = std::string(value);
        } else if (name == "refused" && std::none_of(value.begin(), value.end(), [](char c) {
                       return static_cast<unsigned char>(c) < ' ';
                   })) {
            record.refusedReason = std::string(value.substr(0, 100));
        }
    }
    if (!serialSeen) record.serial = 0, record.expires.clear();
    return record;
}

std::string formatSignatureRecord(const SignatureRecord& record) {
    std::string text;
    if (record.serial) text += "serial=" + std::to_string(record.serial) + "\n";
    if (!record.expires.empty()) text += "expires=" + record.expires + "\n";
    if (!record.refusedDay.empty()) text += "refused-day=" + record.refusedDay + "\n";
    if (!record.refusedReason.empty()) text += "refused=" + record.refusedReason + "\n";
    return text;
}

std::optional<std::string> base64Decode(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    std::string out;
    for (std::size_t i = 0; i < text.size(); i += 4) {
        uint32_t v = 0;
        int pad = 0;
        for (std::size_t k = 0; k < 4; ++k) {
            const char c = text[i + k];
            const char* at = c ? std::strchr(kBase64, c) : nullptr;
            // "=" only at the very end, at most two.
            if (c == '=' && i + 4 == text.size() && k >= 2 && (k == 3 || text[i + 3] == '=')) {
                ++pad;
                v <<= 6;
            } else if (at && !pad) {
                v = (v << 6) | static_cast<uint32_t>(at - kBase64);
            } else {
                return std::nullopt;
            }
        }
        // One spelling for each byte string: the bits that padding leaves over are zero.
        if ((pad == 2 && (v & 0xffff)) || (pad == 1 && (v & 0xff))) return std::nullopt;
        out += static_cast<char>(v >> 16);
        if (pad < 2) out += static_cast<char>((v >> 8) & 0xff);
        if (pad < 1) out += static_cast<char>(v & 0xff);
    }
    return out;
}
