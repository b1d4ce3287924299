// heralder-tool keygen, sign and verify: the publisher's side of signed update
// documents (feed/feed_signature.h has the line's form and the rules). The
// rules are the agent's own; only the cryptography differs between the
// native tool and the Windows one (tool_crypto.h).
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <vector>

#include "base/crt_text.h"
#include "base/file_io.h"
#include "feed/document_file.h"
#include "tools/tool_commands.h"
#include "tools/tool_crypto.h"

#ifdef _WIN32
#include <direct.h>
#include <io.h>
#else
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

constexpr int kDefaultValidDays = 14;

int64_t todayUtc() {
    return static_cast<int64_t>(std::time(nullptr) / 86400);
}

// Prints "heralder-tool: " + message and returns the exit code for a failure.
int fail(const std::string& message) {
    std::fprintf(stderr, "heralder-tool: %s\n", message.c_str());
    return 1;
}

// Creates path, refusing to replace a file; a private key is readable by its
// owner only (on Windows the folder's permissions apply).
bool writeNewFile(const std::string& path, std::string_view text, bool ownerOnly) {
#ifdef _WIN32
    const int fd = _open(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, 0600);
    const auto writeAll = [&] {
        return _write(fd, text.data(), static_cast<unsigned>(text.size()));
    };
    const auto closeFile = [&] { return _close(fd); };
#else
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, ownerOnly ? 0600 : 0644);
    const auto writeAll = [&] { return write(fd, text.data(), text.size()); };
    const auto closeFile = [&] { return close(fd); };
#endif
    if (fd < 0) return false;
    const bool ok = writeAll() == static_cast<long>(text.size());
    return closeFile() == 0 && ok;
}

std::optional<uint64_t> parseSerialArgument(const char* text) {
    // As the signature line takes it: no sign, no leading zero, 18 digits at most.
    if (!*text || std::strlen(text) > 18 || *text == '0') return std::nullopt;
    uint64_t value = 0;
    for (const char* p = text; *p; ++p) {
        if (*p < '0' || *p > '9') return std::nullopt;
        value = value * 10 + static_cast<uint64_t>(*p - '0');
    }
    return value;
}

std::optional<std::vector<FeedKey>> readKeyFiles(const std::vector<std::string>& paths) {
    std::vector<FeedKey> keys;
    for (const std::string& path : paths) {
        const auto text = readFileBytes(path);
        const auto key = text ? readPublicKeyPem(*text) : std::nullopt;
        if (!key) {
            fail(path + " is not a P-256 public key file");
            return std::nullopt;
        }
        keys.push_back(*key);
    }
    return keys;
}

}  // namespace

int runKeygenCommand(int argc, char** argv) {
    if (argc != 1 || argv[0][0] == '-') {
        std::fputs("usage: heralder-tool keygen DIR\n", stderr);
        return 2;
    }
    const std::string dir = argv[0];
    // A new folder for the keys is made (one level); an existing one is used.
#ifdef _WIN32
    _mkdir(dir.c_str());
#else
    mkdir(dir.c_str(), 0700);
#endif
    const std::string privatePath = dir + "/feed-private.pem";
    const std::string publicPath = dir + "/feed-public.pem";
    for (const std::string& path : {privatePath, publicPath})
        if (readFileBytes(path)) return fail(path + " exists; nothing was written");
    const auto key = generateFeedKey();
    if (!key) return fail("could not make a key");
    if (!writeNewFile(privatePath, key->privatePem, true))
        return fail("cannot write " + privatePath);
    if (!writeNewFile(publicPath, publicKeyPem(key->publicPoint), false)) {
        std::remove(privatePath.c_str());
        return fail("cannot write " + publicPath);
    }
    std::printf("%s\n%s\nkey %s\n", privatePath.c_str(), publicPath.c_str(),
                feedKeyId(key->publicPoint).c_str());
    return 0;
}

int runSignCommand(int argc, char** argv) {
    constexpr const char* kUsage =
        "usage: heralder-tool sign --key PRIVATE.pem --serial N [--expires YYYY-MM-DD] IN OUT\n";
    const char *keyPath = nullptr, *serialText = nullptr, *expiresText = nullptr;
    std::vector<std::string> files;
    for (int i = 0; i < argc; ++i) {
        const bool hasValue = i + 1 < argc;
        if (std::strcmp(argv[i], "--key") == 0 && hasValue)
            keyPath = argv[++i];
        else if (std::strcmp(argv[i], "--serial") == 0 && hasValue)
            serialText = argv[++i];
        else if (std::strcmp(argv[i], "--expires") == 0 && hasValue)
            expiresText = argv[++i];
        else if (argv[i][0] == '-')
            files.assign(3, {});
        else
            files.push_back(argv[i]);
    }
    const auto serial = serialText ? parseSerialArgument(serialText) : std::nullopt;
    const int64_t today = todayUtc();
    const auto expiresDay =
        expiresText ? isoDateToDay(expiresText) : std::optional<int64_t>(today + kDefaultValidDays);
    if (!keyPath || files.size() != 2 || !serial || !expiresDay) {
        if (serialText && !serial)
            std::fputs("heralder-tool: the serial is a positive whole number\n", stderr);
        if (expiresText && !expiresDay)
            std::fputs("heralder-tool: the expiry is a date YYYY-MM-DD\n", stderr);
        std::fputs(kUsage, stderr);
        return 2;
    }
    const uint64_t serialNumber = *serial;
    if (files[0] == files[1]) return fail("OUT must not be IN");
    const auto privatePem = readFileBytes(keyPath);
    if (!privatePem) return fail(std::string("cannot read ") + keyPath);
    const auto document = readToolDocument(files[0]);
    if (!document) return 1;

    // An earlier signature is replaced, never signed over.
    std::string body(unsignedPart(*document));
    if (readSignatureLine(body).problem != SignatureProblem::NoSignature)
        return fail(files[0] + " has a signature line that is not its last line");
    const std::string lineEnd = body.find("\r\n") != std::string::npos ? "\r\n" : "\n";
    if (!body.empty() && body.back() != '\n') body += lineEnd;

    // The key's name goes into the signed bytes, so the key is read first.
    const auto probe = signWithPrivateKey(*privatePem, "");
    if (!probe) return fail(std::string(keyPath) + " is not a P-256 private key file");
    const std::string expires = dayToIsoDate(*expiresDay);
    const std::string prefix =
        body + signatureLinePrefix(serialNumber, expires, feedKeyId(probe->publicPoint));
    const auto signature = signWithPrivateKey(*privatePem, prefix);
    if (!signature) return fail("signing failed");
    const std::string signedText =
        body + signatureLine(std::string_view(prefix).substr(body.size()), signature->bytes) +
        lineEnd;
    if (!writeFileBytes(files[1], {signedText})) return fail("cannot write " + files[1]);
    if (expiryPassed(*expiresDay, today))
        std::fprintf(stderr, "heralder-tool: warning: %s has expired: agents will refuse it\n",
                     expires.c_str());
    std::printf("serial: %llu\nexpires: %s\nkey: %s\n",
                static_cast<unsigned long long>(serialNumber), expires.c_str(),
                feedKeyId(signature->publicPoint).c_str());
    return 0;
}

int runVerifyCommand(int argc, char** argv) {
    constexpr const char* kUsage =
        "usage: heralder-tool verify --key PUBLIC.pem [--key PUBLIC2.pem] FILE\n";
    std::vector<std::string> keyPaths;
    std::vector<std::string> files;
    for (int i = 0; i < argc; ++i) {
        if (std::strcmp(argv[i], "--key") == 0 && i + 1 < argc)
            keyPaths.push_back(argv[++i]);
        else if (argv[i][0] == '-')
            files.assign(2, {});
        else
            files.push_back(argv[i]);
    }
    if (keyPaths.empty() || keyPaths.size() > 2 || files.size() != 1) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const auto keys = readKeyFiles(keyPaths);
    if (!keys) return 2;
    const auto document = readToolDocument(files[0]);
    if (!document) return 1;
    const SignatureVerdict verdict =
        checkFeedSignature(*document, *keys, verifyFeedSignature, todayUtc(), 0);
    if (verdict.line)
        std::printf("serial: %llu\nexpires: %s\n",
                    static_cast<unsigned long long>(verdict.line->serial),
                    verdict.line->expires.c_str());
    if (verdict.accepted())
        std::puts("valid");
    else
        std::printf("not valid: %s\n", signatureProblemText(verdict.problem));
    return verdict.accepted() ? 0 : 1;
}

std::optional<Finding> signatureFinding(std::string_view document,
                                        const std::vector<std::string>& keyPaths) {
    const auto keys = readKeyFiles(keyPaths);
    if (!keys) return Finding{1, FindingSeverity::Error, "the key file cannot be read"};
    const SignatureVerdict verdict =
        checkFeedSignature(document, *keys, verifyFeedSignature, todayUtc(), 0);
    if (verdict.accepted()) return std::nullopt;
    const SignatureReading reading = readSignatureLine(document);
    std::size_t at =
        reading.problem == SignatureProblem::NoSignature ? document.size() : reading.lineStart;
    int line = 1;
    for (std::size_t i = 0; i < at && i < document.size(); ++i) line += document[i] == '\n';
    if (at == document.size() && !document.empty() && document.back() == '\n') --line;
    return Finding{
        line, FindingSeverity::Error,
        std::string("the signature is not valid: ") + signatureProblemText(verdict.problem)};
}
