#pragma once
// Whether the agent may act on an update document, for a build with the
// publisher's public keys built in (HERALDER_FEED_KEYS). Without keys every
// document is accepted, exactly as before. The rules are feed_signature.h's;
// this adds the keys, Windows' CNG for the cryptography, the clock and the
// small record kept beside the seen list.
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "feed/feed_signature.h"

// The built-in keys; empty in a build without HERALDER_FEED_KEYS.
const std::vector<FeedKey>& builtInFeedKeys();

// SHA-256 through bcrypt.dll (the hash object API, which Windows 7 has too).
std::optional<std::array<uint8_t, 32>> sha256WithCng(std::string_view message);
// ECDSA P-256 / SHA-256 through bcrypt.dll.
bool verifyWithCng(const FeedKey& key, std::string_view message,
                   const std::array<uint8_t, 64>& signature);

struct DocumentTrust {
    bool accepted = true;
    bool tellUser = false;  // refused, and not yet told today
};
// Judges a document fetched from the server before anything in it is shown,
// applied or fetched. An accepted serial is remembered, so an older document
// is refused later; a refusal is remembered for system information and so
// that the user is told at most once a day. recordPath "" uses the product
// folder's record.
DocumentTrust judgeServerDocument(std::string_view document, std::time_t now = std::time(nullptr),
                                  const std::string& recordPath = "");

// For a local document: "" when it verifies (or no key is built in), else the
// few words the main window adds to its title.
std::string localDocumentMark(std::string_view document, std::time_t now = std::time(nullptr));

// One line for system information: the keys, the last accepted serial and
// expiry, and the last refusal with its reason; "" in a build without keys.
std::string signatureStatusText(const std::string& recordPath = "");
