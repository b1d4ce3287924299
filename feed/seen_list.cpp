// The seen-item list (see seen_list.h). The file format is fixed by the copies
// of the program already in use: every reader must accept what they wrote, and
// what we write must read back the same with theirs.
#include "feed/seen_list.h"

#include <sys/stat.h>

#include <cstdio>

#include "base/crt_text.h"
#include "base/file_io.h"

namespace {
// fgets in the original reader used a buffer of this many bytes.
constexpr std::size_t kLineBuffer = 260;

// Lines as the reader sees them, CR LF as LF. Unlike a text-mode read, a Ctrl-Z
// does not end the list: one stray byte must not hide every mark after it.
template <class Fn>
void forEachLine(std::string_view fileBytes, Fn&& fn) {
    std::string text;
    text.reserve(fileBytes.size());
    for (std::size_t i = 0; i < fileBytes.size(); ++i)
        if (!(fileBytes[i] == '\r' && i + 1 < fileBytes.size() && fileBytes[i + 1] == '\n'))
            text.push_back(fileBytes[i]);
    forEachFgetsPiece(text, kLineBuffer, fn);
}

// Bytes that a list of "%d" lines can hold; anything else is damage.
bool isListByte(unsigned char c) {
    return (c >= 32 && c < 127) || c == '\t' || c == '\r' || c == '\n';
}

bool startsWithDigit(std::string_view line) {
    std::size_t i = line.find_first_not_of(" \t\v\f");
    if (i != std::string_view::npos && (line[i] == '+' || line[i] == '-')) ++i;
    return i < line.size() && line[i] >= '0' && line[i] <= '9';
}
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
    numbers.reserve(fileBytes.size() / 4 + 1);
    forEachLine(fileBytes, [&](std::string_view piece) { numbers.insert(atoiLike(piece)); });
    return numbers;
}

SeenListShape seenListShape(std::string_view fileBytes) {
    SeenListShape shape;
    for (char c : fileBytes)
        if (!isListByte(static_cast<unsigned char>(c))) shape.damaged = true;
    shape.endsOpen = !fileBytes.empty() && fileBytes.back() != '\n';
    return shape;
}

std::string cleanSeenList(std::string_view fileBytes) {
    std::string out;
    std::unordered_set<int32_t> kept;
    forEachLine(fileBytes, [&](std::string_view piece) {
        // Only what a mark wrote: a line of damage would otherwise read as 0.
        if (!startsWithDigit(piece)) return;
        const int32_t number = atoiLike(piece);
        if (!kept.insert(number).second) return;
        out += std::to_string(number);
        out += "\r\n";
    });
    return out;
}

void SeenList::refreshIfChanged() {
    if (loaded_ && held_ > 0) return;
    std::optional<FileStamp> now = fileStamp(path_);
    if (loaded_ && now == stamp_) return;
    numbers_.clear();
    shape_ = {};
    loaded_ = false;
    stamp_ = now;
    if (!now) {
        loaded_ = true;  // no file: nothing seen until one appears
        return;
    }
    std::optional<std::string> bytes = readFileBytes(path_);
    if (!bytes) return;  // unreadable: nothing seen, and try again next time
    numbers_ = parseSeenNumbers(*bytes);
    shape_ = seenListShape(*bytes);
    // The file may have grown between the stamp and the read; a later check then
    // finds a newer stamp and reads again, which costs time but never an entry.
    loaded_ = true;
}

bool SeenList::isItemSeen(const UpdateItem& item) {
    refreshIfChanged();
    return numbers_.count(item.number) != 0;
}

// A damaged list is written again from the numbers it holds, in one step, so
// that the marks after the damage count again and new ones land on clean lines.
bool SeenList::repair() {
    std::optional<std::string> bytes = readFileBytes(path_);
    if (!bytes) return false;
    if (!replaceFileContents(path_, {cleanSeenList(*bytes)})) return false;
    loaded_ = false;
    refreshIfChanged();
    return loaded_;
}

bool SeenList::markItemSeen(const UpdateItem& item) {
    refreshIfChanged();
    if (loaded_ && shape_.damaged && !repair()) return false;
    const bool inStep = loaded_;
    const std::optional<FileStamp> before = stamp_;

    // Binary append with an explicit CR LF: the same bytes a text-mode "%d\n"
    // writes on Windows, on every platform. A last line left without its line
    // end is closed first, or the two numbers would fuse into one.
    std::string line = loaded_ && shape_.endsOpen ? "\r\n" : "";
    line += std::to_string(item.number);
    line += "\r\n";
    if (!appendFileBytes(path_, line)) {
        loaded_ = false;  // whatever reached the file is read back next time
        return false;
    }

    // Keep the set in step without reading the file again, but only when our
    // line is the only change since the set was read: an append by another
    // writer in between makes the sizes disagree and forces a fresh read.
    std::optional<FileStamp> after = fileStamp(path_);
    uint64_t sizeBefore = before ? before->size : 0;
    if (inStep && after && after->size == sizeBefore + line.size()) {
        numbers_.insert(item.number);
        stamp_ = after;
        shape_.endsOpen = false;
    } else {
        loaded_ = false;
    }
    return true;
}
