#pragma once
// Shared pieces of the native tests: a scratch folder that removes itself, file
// helpers, and a run host that answers like a scripted user and records it.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "feed/notification_run.h"

struct ScratchFolder {
    std::string path = [] {
        std::string pattern = (std::filesystem::temp_directory_path() / "heralder-XXXXXX").string();
        return mkdtemp(pattern.data()) ? pattern + "/" : std::string();
    }();
    ScratchFolder() = default;
    ScratchFolder(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        if (!path.empty()) std::filesystem::remove_all(path, ignored);
    }
    std::string file(const std::string& name) const { return path + name; }
};

inline void writeFile(const std::string& path, const std::string& bytes, bool append = false) {
    std::ofstream(path, std::ios::binary | (append ? std::ios::app : std::ios::trunc)) << bytes;
}

inline std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline std::string repeat(std::string_view piece, std::size_t times) {
    std::string s;
    while (times--) s += piece;
    return s;
}

inline std::string withCrLf(std::string_view text) {
    std::string out;
    for (char c : text) out += c == '\n' ? "\r\n" : std::string(1, c);
    return out;
}

inline UpdateItem makeItem(ItemType type, int32_t number) {
    UpdateItem item;
    item.type = type;
    item.number = number;
    return item;
}

// Windows answer Next, or Cancel on item cancelOn; "never show again" is ticked
// on item neverShowAgainOn; the prompt marks its first promptMarks items before
// answering; files come from serverFiles; the run's download time is spent
// once timeSpentAfter fetches have been made (never when negative).
struct ScriptedHost : RunHost {
    int32_t cancelOn = 0, neverShowAgainOn = 0;
    int promptAnswer = 1, timeSpentAfter = -1, fetches = 0, waitedForUser = 0;
    std::size_t promptMarks = 0;
    bool userFree = true;  // what waitForUser answers
    std::map<std::string, std::string> serverFiles;
    std::optional<InstalledVersion> installed;
    std::string folder;
    std::vector<int32_t> shown;  // in the order the windows opened
    std::vector<int> prompts;    // the waiting counts the prompt was opened with
    std::vector<std::string> messages;

    int showAlertWindow(UpdateItem& item) override { return showVersionWindow(item); }
    int showVersionWindow(UpdateItem& item) override {
        shown.push_back(item.number);
        item.neverShowAgain = item.number == neverShowAgainOn;
        return item.number == cancelOn ? 0 : 1;
    }
    int promptMultipleItems(std::vector<UpdateItem>& items, int waiting, SeenList& seen) override {
        for (std::size_t i = 0; i < promptMarks && i < items.size(); ++i)
            seen.markItemSeen(items[i]);
        prompts.push_back(waiting);
        return promptAnswer;
    }
    std::optional<std::string> fetchServerFile(const std::string& path) override {
        ++fetches;
        auto found = serverFiles.find(path);
        return found == serverFiles.end() ? std::nullopt : std::optional(found->second);
    }
    void showMessage(const std::string& text) override { messages.push_back(text); }
    bool downloadTimeSpent() override { return timeSpentAfter >= 0 && fetches >= timeSpentAfter; }
    std::string graphicFolder() override { return folder; }
    bool waitForUser() override { return ++waitedForUser, userFree; }
    void beginWaitCursor() override {}
    void endWaitCursor() override {}
    std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem&) override {
        return installed;
    }
};
