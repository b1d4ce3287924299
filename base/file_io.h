#pragma once
// Whole-file reads and writes for the program's own files. Every write is
// checked to the end: the C runtime can report success from fclose after a
// write that failed for want of space, so each write is flushed, and flushed to
// the disk, before it counts. Files that must never be seen half written (the
// settings, the seen list when it is rewritten, pictures, the colour table) are
// written beside their old copy and put in its place in one step.
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

// True when something of that name exists (a file that cannot be read
// included: that is a damaged file, not a missing one).
bool fileExists(const std::string& path);

// The whole file in binary; nullopt when it cannot be opened or read.
std::optional<std::string> readFileBytes(const std::string& path);

// How far a write must get before it counts. To the disk for a file that has
// to outlive a power cut; only to the system (which still reports a full disk)
// for a spare copy, whose loss in a power cut costs nothing while the file it
// copies was itself flushed, and for a new file whose loss another file on
// the disk makes good: asking the disk costs a daily run more than all its
// other work.
enum class WriteReach { Disk, System };

// Creates or truncates the file and writes the pieces one after another, in
// binary. True only when every byte got as far as reach.
bool writeFileBytes(const std::string& path, std::initializer_list<std::string_view> pieces,
                    WriteReach reach = WriteReach::Disk);

// Moves the file from over the file to (which may be missing) in one step;
// with WriteReach::Disk the move itself is on the disk before it counts.
bool replaceFileWith(const std::string& from, const std::string& to,
                     WriteReach reach = WriteReach::Disk);

// Gives the file a second name, one more link to the same bytes on the disk;
// false where the file system has no such links (the caller then copies).
bool linkFile(const std::string& existing, const std::string& name);

// Whole seconds since the file was last written; nullopt when it cannot be
// asked (a missing file included).
std::optional<long long> fileAgeSeconds(const std::string& path);

// Writes the pieces to a file beside path and then replaces path with it: a
// crash, a kill or a full disk leaves either the old file or the new one. On
// failure the old file is untouched and nothing is left behind.
bool replaceFileContents(const std::string& path, std::initializer_list<std::string_view> pieces,
                         WriteReach reach = WriteReach::Disk);

// Appends bytes at the end of the file, creating it when missing. A write that
// fails part way is cut back off, so no partial line is left to fuse with the
// next one.
bool appendFileBytes(const std::string& path, std::string_view bytes);

// Called by replaceFileContents after the new file is complete and before it
// takes the old one's place: tests end the process there to show that a kill
// at the worst moment loses nothing.
using FileReplaceHook = void (*)(const std::string& path);
void setFileReplaceHook(FileReplaceHook hook);
