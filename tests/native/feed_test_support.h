#pragma once
// Shared pieces of the feed tests: a scratch folder that removes itself, file
// helpers, and a scripted run host that answers like a user would and
// records what it was asked.
#include <unistd.h>

#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "feed/notification_run.h"

class ScratchFolder {
  public:
    ScratchFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "heralder-XXXXXX").string();
        path_ = mkdtemp(pattern.data()) ? pattern + "/" : std::string();
    }
    ~ScratchFolder() {
        std::error_code ignored;
        if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // The folder with its final "/".
    const std::string& path() const { return path_; }
    std::string file(const std::string& name) const { return path_ + name; }

  private:
    std::string path_;
};

inline void writeFile(const std::string& path, const std::string& bytes, bool append = false) {
    std::ofstream out(path, std::ios::binary | (append ? std::ios::app : std::ios::trunc));
    out << bytes;
}

inline std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline UpdateItem makeItem(ItemType type, int32_t number) {
    UpdateItem item;
    item.type = type;
    item.number = number;
    return item;
}

// Answers windows from a script (1 when the script has run out), ticks "never
// show again" on the numbers it is told to, and serves files from a map.
class ScriptedHost : public RunHost {
  public:
    std::deque<int> windowAnswers;
    std::vector<int32_t> neverShowAgainOn;
    int promptAnswer = 1;
    std::map<std::string, std::string> serverFiles;
    std::optional<InstalledVersion> installed;
    std::string folder;

    std::vector<int32_t> shown;  // item numbers in the order their windows opened
    std::vector<int> prompts;    // the waiting counts the prompt was opened with
    std::vector<std::string> fetched;
    std::vector<std::string> messages;
    int waitDepth = 0;
    int maxWaitDepth = 0;

    int showAlertWindow(UpdateItem& item) override { return answer(item); }
    int showVersionWindow(UpdateItem& item) override { return answer(item); }
    int promptMultipleItems(std::vector<UpdateItem>&, int waiting, SeenList&) override {
        prompts.push_back(waiting);
        return promptAnswer;
    }
    std::optional<std::string> fetchServerFile(const std::string& path) override {
        fetched.push_back(path);
        auto found = serverFiles.find(path);
        if (found == serverFiles.end()) return std::nullopt;
        return found->second;
    }
    void showMessage(const std::string& text) override { messages.push_back(text); }
    std::string graphicFolder() override { return folder; }
    void beginWaitCursor() override { maxWaitDepth = std::max(maxWaitDepth, ++waitDepth); }
    void endWaitCursor() override { --waitDepth; }
    std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem&) override {
        return installed;
    }

  private:
    int answer(UpdateItem& item) {
        shown.push_back(item.number);
        for (int32_t n : neverShowAgainOn)
            if (n == item.number) item.neverShowAgain = true;
        if (windowAnswers.empty()) return 1;
        int result = windowAnswers.front();
        windowAnswers.pop_front();
        return result;
    }
};
