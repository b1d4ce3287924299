#pragma once
// The tests' side of the recorder (recorder.cpp): where the stand-in lies, a
// scratch folder for copies of it, and what the copies wrote down.
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "base/win_headers.h"

struct Recorded {
    int show;                 // the show command the program was given, -1 none
    std::string commandLine;  // exactly as it received it
};

// Folder of the running test program, ending in a backslash.
inline std::string testProgramFolder() {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string folder(path);
    return folder.substr(0, folder.find_last_of('\\') + 1);
}

// The recorder is built beside the test program.
inline std::string recorderPath() {
    return testProgramFolder() + "recorder.exe";
}

// The command line the shell gives a program it opens with parameters: the
// program quoted, one space, the parameters.
inline std::string shellCommandLine(const std::string& program, const std::string& parameters) {
    return "\"" + program + "\" " + parameters;
}

// A folder of the temporary directory for one suite's files, created on demand.
inline std::string scratchFolder(const char* name) {
    char temp[MAX_PATH] = {};
    GetTempPathA(MAX_PATH, temp);
    std::string folder = std::string(temp) + name + "\\";
    CreateDirectoryA(folder.c_str(), nullptr);
    return folder;
}

// While alive, every recorder started by this process (or its children)
// appends to one fresh file.
class Recording {
  public:
    explicit Recording(std::string file) : file_(std::move(file)) {
        DeleteFileA(file_.c_str());
        SetEnvironmentVariableA("HERALDER_RECORDER_FILE", file_.c_str());
    }
    ~Recording() {
        SetEnvironmentVariableA("HERALDER_RECORDER_FILE", nullptr);
        DeleteFileA(file_.c_str());
    }
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    // What was recorded once at least one start has been written down (or
    // after timeoutMs); a moment more lets a wrong second start show up too.
    std::vector<Recorded> wait(DWORD timeoutMs = 10000) const {
        for (DWORD waited = 0; read().empty() && waited < timeoutMs; waited += 20) Sleep(20);
        Sleep(300);
        return read();
    }

    std::vector<Recorded> read() const {
        std::vector<Recorded> records;
        std::ifstream in(file_, std::ios::binary);
        for (std::string line; std::getline(in, line);)
            if (const std::size_t tab = line.find('\t'); tab != std::string::npos && !in.eof())
                records.push_back({std::atoi(line.c_str()), line.substr(tab + 1)});
        return records;
    }

  private:
    std::string file_;
};
