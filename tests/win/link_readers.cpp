// The tests' two readers of shell links (see link_readers.h).
#include "tests/win/link_readers.h"

#include <gtest/gtest.h>
#include <wrl/client.h>

#include <fstream>

#include "base/win_headers.h"
#include "settings/file_locations_win.h"
#include "tests/win/recorder/recording.h"

using Microsoft::WRL::ComPtr;

std::optional<LinkFields> readLinkThroughShell(const std::string& file) {
    ComPtr<IShellLinkA> link;
    ComPtr<IPersistFile> persist;
    WCHAR wide[MAX_PATH] = {};
    MultiByteToWideChar(CP_ACP, 0, file.c_str(), -1, wide, MAX_PATH);
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER,
                                IID_PPV_ARGS(&link))) ||
        FAILED(link.As(&persist)) || FAILED(persist->Load(wide, STGM_READ))) {
        return std::nullopt;
    }
    char text[4][MAX_PATH] = {};
    link->GetPath(text[0], MAX_PATH, nullptr, SLGP_RAWPATH);
    link->GetArguments(text[1], MAX_PATH);
    link->GetDescription(text[2], MAX_PATH);
    link->GetWorkingDirectory(text[3], MAX_PATH);
    return LinkFields{text[0], text[1], text[2], text[3]};
}

std::string unixPath(const std::string& path) {
    using ToUnix = char*(CDECL*)(const WCHAR*);
    auto toUnix = reinterpret_cast<ToUnix>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
    WCHAR wide[MAX_PATH] = {};
    MultiByteToWideChar(CP_ACP, 0, path.c_str(), -1, wide, MAX_PATH);
    char* name = toUnix ? toUnix(wide) : nullptr;
    if (!name) return std::string();
    std::string result(name);
    HeapFree(GetProcessHeap(), 0, name);
    return result;
}

// exiftool's "-S" listing ("Tag: value" lines) of a file, as a map. Wine runs
// a Unix program that CreateProcess is given, but hands back neither a process
// to wait for nor our pipes, so a shell writes the listing to a file and
// renames it when complete.
std::map<std::string, std::string> exiftoolTags(const std::string& file) {
    std::map<std::string, std::string> tags;
    const std::string folder = scratchFolder("heralder_startup_test");
    const std::string listing = folder + "exiftool.txt";
    DeleteFileA(listing.c_str());
    const std::string unixFile = unixPath(file), unixFolder = unixPath(folder);
    if (unixFile.empty() || unixFolder.empty()) return tags;
    std::string commandLine = "sh -c \"exiftool -S '" + unixFile + "' > '" + unixFolder +
                              "exiftool.tmp' 2>&1; mv '" + unixFolder + "exiftool.tmp' '" +
                              unixFolder + "exiftool.txt'\"";
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA("Z:\\bin\\sh", commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        nullptr, &startup, &process)) {
        return tags;
    }
    if (process.hThread) CloseHandle(process.hThread);
    if (process.hProcess) CloseHandle(process.hProcess);
    for (int waited = 0;
         GetFileAttributesA(listing.c_str()) == INVALID_FILE_ATTRIBUTES && waited < 15000;
         waited += 20) {
        Sleep(20);
    }
    std::ifstream in(listing);
    for (std::string text; std::getline(in, text);) {
        if (!text.empty() && text.back() == '\r') text.pop_back();
        const std::size_t colon = text.find(": ");
        if (colon != std::string::npos) tags[text.substr(0, colon)] = text.substr(colon + 2);
    }
    in.close();
    DeleteFileA(listing.c_str());
    return tags;
}

std::string startupLinkPath() {
    std::string folder = getSpecialFolderPath(CSIDL_STARTUP).value_or("");
    EXPECT_FALSE(folder.empty()) << "no Startup folder";
    if (!folder.empty() && folder.back() != '\\') folder += '\\';
    return folder + "Heralder.lnk";
}

void expectStartupLink(const std::string& link, const std::string& program,
                       const std::string& arguments) {
    const std::string folder = program.substr(0, program.find_last_of('\\') + 1);
    const std::optional<LinkFields> fields = readLinkThroughShell(link);
    ASSERT_TRUE(fields) << link;
    EXPECT_EQ(fields->path, program);
    EXPECT_EQ(fields->arguments, arguments);
    EXPECT_EQ(fields->description, "Quenmark Heralder");
    EXPECT_EQ(fields->workingDirectory, folder);

    std::map<std::string, std::string> tags = exiftoolTags(link);
    EXPECT_EQ(tags["LocalBasePath"], program);
    EXPECT_EQ(tags["CommandLineArguments"], arguments);
    EXPECT_EQ(tags["Description"], "Quenmark Heralder");
    EXPECT_EQ(tags["WorkingDirectory"], folder);
}
