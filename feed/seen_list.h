#pragma once
// The seen-item list "Heralder.lst": one decimal item number per line, only ever
// appended to, read back line by line with atoi. The file stays the record;
// SeenList keeps a hash set of its numbers so that a run over many items reads
// the file once instead of once per question. The set follows the run's own
// appends and is read again whenever the file changed on disk meanwhile
// (another copy of the program may append to it at any time).
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_set>

#include "feed/update_item.h"

// Size and modification time of a file; nullopt-able so a missing file is a
// state of its own.
struct FileStamp {
    uint64_t size = 0;
    int64_t modified = 0;  // nanoseconds where the platform has them
    bool operator==(const FileStamp&) const = default;
};
std::optional<FileStamp> fileStamp(const std::string& path);

// The numbers an existing list holds, read as fgets with a 260-byte buffer
// and atoi give them (a blank or non-numeric line is 0, a line longer than 259
// characters counts as several); a Ctrl-Z ends nothing.
std::unordered_set<int32_t> parseSeenNumbers(std::string_view fileBytes);

// What a list needs before the next append: damaged when it holds a byte that
// no number line holds (a NUL, a Ctrl-Z, binary), open when its last line has
// no line end.
struct SeenListShape {
    bool damaged = false;
    bool endsOpen = false;
};
SeenListShape seenListShape(std::string_view fileBytes);
// The list written clean: every line that begins with a number, as "%d" and
// CR LF, each number once, in the order first met.
std::string cleanSeenList(std::string_view fileBytes);

class SeenList {
  public:
    explicit SeenList(std::string path) : path_(std::move(path)) {}

    // True when some line of the list reads as the item's number. A missing or
    // unreadable list makes every item new.
    bool isItemSeen(const UpdateItem& item);
    // Appends the item's number ("%d" and CR LF) at once, after closing an open
    // last line and rewriting a damaged list clean. False when the list cannot
    // be opened or written; nothing is remembered then.
    bool markItemSeen(const UpdateItem& item);

    const std::string& path() const { return path_; }

    // While one lives, the list is read at most once and its file not looked
    // at again: a pass over millions of items would otherwise ask the file
    // system for the list's stamp millions of times. Marks made meanwhile
    // still count; another copy's marks count from the next look on.
    class OneLook {
      public:
        explicit OneLook(SeenList& list) : list_(list) { ++list_.held_; }
        ~OneLook() { --list_.held_; }
        OneLook(const OneLook&) = delete;
        OneLook& operator=(const OneLook&) = delete;

      private:
        SeenList& list_;
    };

  private:
    void refreshIfChanged();
    bool repair();

    std::string path_;
    std::unordered_set<int32_t> numbers_;
    bool loaded_ = false;
    std::optional<FileStamp> stamp_;  // of the file as numbers_ reflects it
    SeenListShape shape_;
    int held_ = 0;  // OneLooks alive
};
