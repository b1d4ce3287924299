// The seen-item list (see seen_list.h). The file format is fixed by the copies
// of the program already in use: every reader must accept what they wrote, and
// what we write must read back the same with theirs.
#include "feed/seen_list.h"

#include <sys/stat.h>

#include <cstdio>

#include "base/crt_text.h"

namespace {
// fgets in the original reader used a buffer of this many bytes.
constexpr std::size_t kLineBuffer = 260;
}  // namespace

std::optional<FileStamp> fileStamp(const std::string& path) {
#ifdef _WIN32
    // _stat64 takes the ANSI path as fopen does, so both see the same file.
    struct _stat64 st;
    if (_stat64(path.c_str(), &st) != 0) return std::nullopt;
    return FileStamp{static_cast<uint64_t>(st.st_size), static_cast<int64_t>(st.st_mtime)};
#else
    struct stat st;
    if (stat(path.c_str(), &st) != 0) return std::nullopt;
    return FileStamp{static_cast<uint64_t>(st.st_size),
                     static_cast<int64_t>(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec};
#endif
}

std::unordered_set<int32_t> parseSeenNumbers(std::string_view fileBytes) {
    std::unordered_set<int32_t> numbers;
    std::string text = textModeView(fileBytes);
    numbers.reserve(text.size() / 4 + 1);
    forEachFgetsPiece(text, kLineBuffer,
                      [&](std::string_view piece) { numbers.insert(atoiLike(piece)); });
    return numbers;
}

void SeenList::refreshIfChanged() {
    std::optional<FileStamp> now = fileStamp(path_);
    if (loaded_ && now == stamp_) return;
    numbers_.clear();
    loaded_ = false;
    stamp_ = now;
    if (!now) {
        loaded_ = true;  // no file: nothing seen until one appears
        return;
    }
    std::optional<std::string> bytes = readFileBytes(path_);
    if (!bytes) return;  // unreadable: nothing seen, and try again next time
    numbers_ = parseSeenNumbers(*bytes);
    // The file may have grown between the stamp and the read; a later check then
    // finds a newer stamp and reads again, which costs time but never an entry.
    loaded_ = true;
}

bool SeenList::isItemSeen(const UpdateItem& item) {
    refreshIfChanged();
    return numbers_.count(item.number) != 0;
}

bool SeenList::markItemSeen(const UpdateItem& item) {
    refreshIfChanged();
    const bool inStep = loaded_;
    const std::optional<FileStamp> before = stamp_;

    // Binary append with an explicit CR LF: the same bytes a text-mode "%d\n"
    // writes on Windows, on every platform.
    std::FILE* f = std::fopen(path_.c_str(), "ab");
    if (!f) return false;
    char line[16];
    int length = std::snprintf(line, sizeof line, "%d\r\n", static_cast<int>(item.number));
    bool ok = std::fwrite(line, 1, static_cast<std::size_t>(length), f) ==
              static_cast<std::size_t>(length);
    ok = std::fclose(f) == 0 && ok;
    if (!ok) {
        loaded_ = false;  // whatever reached the file is read back next time
        return false;
    }

    // Keep the set in step without reading the file again, but only when our
    // line is the only change since the set was read: an append by another
    // writer in between makes the sizes disagree and forces a fresh read.
    std::optional<FileStamp> after = fileStamp(path_);
    uint64_t sizeBefore = before ? before->size : 0;
    if (inStep && after && after->size == sizeBefore + static_cast<uint64_t>(length)) {
        numbers_.insert(item.number);
        stamp_ = after;
    } else {
        loaded_ = false;
    }
    return true;
}
