// The tests' two readers of shell links (see link_readers.h).
#include "tests/win/link_readers.h"

#include <gtest/gtest.h>
#include <wrl/client.h>

#include <array>
#include <fstream>
#include <map>

#include "base/win_headers.h"
#include "settings/file_locations_win.h"
#include "tests/win/recorder/recording.h"

namespace {

using Fields = std::array<std::string, 4>;  // path, arguments, description, working folder

Fields readThroughShell(const std::string& file) {
    Microsoft::WRL::ComPtr<IShellLinkA> link;
    Microsoft::WRL::ComPtr<IPersistFile> persist;
    const std::wstring wide(file.begin(), file.end());
    char text[4][MAX_PATH] = {};
    if (SUCCEEDED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER,
                                   IID_PPV_ARGS(&link))) &&
        SUCCEEDED(link.As(&persist)) && SUCCEEDED(persist->Load(wide.c_str(), STGM_READ))) {
        link->GetPath(text[0], MAX_PATH, nullptr, SLGP_RAWPATH);
        link->GetArguments(text[1], MAX_PATH);
        link->GetDescription(text[2], MAX_PATH);
        link->GetWorkingDirectory(text[3], MAX_PATH);
    }
    return {text[0], text[1], text[2], text[3]};
}

// The Unix path of a Windows one (Wine's own export), or "".
std::string unixPath(const std::string& path) {
    using ToUnix = char*(CDECL*)(const WCHAR*);
    auto toUnix = reinterpret_cast<ToUnix>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
    const std::wstring wide(path.begin(), path.end());
    char* name = toUnix ? toUnix(wide.c_str()) : nullptr;
    if (!name) return std::string();
    std::string result(name);
    HeapFree(GetProcessHeap(), 0, name);
    return result;
}

// exiftool's "-S" listing ("Tag: value" lines). Wine runs a Unix program that
// CreateProcess is given, but hands back neither a process to wait for nor our
// pipes, so a shell writes the listing to a file and renames it when complete.
Fields readThroughExiftool(const std::string& file) {
    const std::string folder = scratchFolder("heralder_startup_test");
    const std::string listing = folder + "exiftool.txt", unixFolder = unixPath(folder);
    DeleteFileA(listing.c_str());
    std::string commandLine = "sh -c \"exiftool -S '" + unixPath(file) + "' > '" + unixFolder +
                              "exiftool.tmp' 2>&1; mv '" + unixFolder + "exiftool.tmp' '" +
                              unixFolder + "exiftool.txt'\"";
    STARTUPINFOA startup = {sizeof startup};
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA("Z:\\bin\\sh", commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        nullptr, &startup, &process))
        return {};
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    for (int waited = 0; !std::ifstream(listing) && waited < 15000; waited += 20) Sleep(20);
    std::map<std::string, std::string> tags;
    std::ifstream in(listing, std::ios::binary);
    for (std::string text; std::getline(in, text);)
        if (const std::size_t colon = text.find(": "); colon != std::string::npos)
            tags[text.substr(0, colon)] = text.substr(colon + 2);
    in.close();
    DeleteFileA(listing.c_str());
    return {tags["LocalBasePath"], tags["CommandLineArguments"], tags["Description"],
            tags["WorkingDirectory"]};
}

}  // namespace

std::string startupLinkPath() {
    std::string folder = getSpecialFolderPath(CSIDL_STARTUP).value_or("");
    EXPECT_FALSE(folder.empty()) << "no Startup folder";
    if (!folder.empty() && folder.back() != '\\') folder += '\\';
    return folder + "Heralder.lnk";
}

void expectStartupLink(const std::string& link, const std::string& program,
                       const std::string& arguments) {
    const Fields want = {program, arguments, "Quenmark Heralder",
                         program.substr(0, program.find_last_of('\\') + 1)};
    EXPECT_EQ(readThroughShell(link), want) << "IShellLink";
    EXPECT_EQ(readThroughExiftool(link), want) << "exiftool";
}
