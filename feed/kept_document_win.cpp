// The kept copy on disk and the conditional fetch that uses it. The file is
// written beside its final name, then moved over the old copy, so that a
// crash or a full disk leaves the old copy or the new one, and a damaged file
// is simply not used (the format's own check). It is not flushed to the disk:
// a copy lost in a power cut costs one whole fetch, while waiting for the disk
// costs every day with news a few milliseconds before its first window, and a
// document of tens of megabytes a tenth of a second or more.
#include "feed/kept_document_win.h"

#include "base/win_handles.h"
#include "feed/http_reply.h"
#include "feed/http_win.h"
#include "settings/file_locations_win.h"

namespace {

std::wstring widen(const std::string& text) {
    const int length = MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, nullptr, 0);
    if (length <= 0) return {};
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, wide.data(), length);
    wide.resize(static_cast<std::size_t>(length - 1));
    return wide;
}

// The header before the text is a few hundred bytes at most.
constexpr LONGLONG kMaxKeptFile = static_cast<LONGLONG>(maxContentLength) + 4096;

}  // namespace

std::string keptDocumentPath() {
    return getUserHeralderPath("Update.kept");
}

std::optional<KeptDocument> readKeptDocument(const std::string& path) {
    if (path.empty()) return std::nullopt;
    UniqueFile file(CreateFileW(widen(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size;
    if (!file || !GetFileSizeEx(file.get(), &size) || size.QuadPart > kMaxKeptFile)
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!bytes.empty() &&
        (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) ||
         read != bytes.size()))
        return std::nullopt;
    return parseKeptDocument(bytes);
}

bool writeKeptDocument(const std::string& path, const KeptDocument& kept) {
    if (path.empty()) return false;
    const std::wstring target = widen(path);
    const std::wstring temporary = target + L".new";
    const std::string bytes = formatKeptDocument(kept);
    {
        UniqueFile file(CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
        DWORD written = 0;
        const bool ok = file &&
                        WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()),
                                  &written, nullptr) &&
                        written == bytes.size();
        if (!ok) {
            file.reset();
            DeleteFileW(temporary.c_str());
            return false;
        }
    }
    if (MoveFileExW(temporary.c_str(), target.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return true;
    DeleteFileW(temporary.c_str());
    return false;
}

std::optional<FetchedDocument> fetchDocument(HWND owner, const std::string& host,
                                             const std::string& path, const std::string& keptPath) {
    const std::optional<KeptDocument> kept = readKeptDocument(keptPath);
    const KeptDocument* keptCopy = kept ? &*kept : nullptr;
    const bool conditional = isConditionalRequest(keptCopy);
    std::optional<FetchReply> reply =
        fetchServerReply(owner, host, {path, documentRequestHeaders(keptCopy), true});
    if (!reply) return std::nullopt;
    switch (judgeDocumentReply(reply->status, conditional)) {
        case DocumentReply::KeptCopy:
            return FetchedDocument{*kept, true};
        case DocumentReply::Failed:
            return std::nullopt;
        case DocumentReply::Body:
            break;
    }
    return FetchedDocument{
        {std::move(reply->body), std::move(reply->etag), std::move(reply->lastModified)}, false};
}

void keepFetchedDocument(const std::string& keptPath, const FetchedDocument& fetched) {
    if (fetched.fromKeptCopy || keptPath.empty()) return;
    if (!isConditionalRequest(&fetched.document)) {
        DeleteFileW(widen(keptPath).c_str());
        return;
    }
    writeKeptDocument(keptPath, fetched.document);
}
