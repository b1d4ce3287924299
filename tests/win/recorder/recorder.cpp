// A stand-in for a web browser or an associated program in the Windows tests.
// It appends one line to the file named by HERALDER_RECORDER_FILE and exits:
// the show command it was asked for (STARTUPINFO's wShowWindow, or -1 when none
// was given), a tab, and its whole command line exactly as it received it.
// A GUI program, so that starting it never opens a console window.
#include <windows.h>

#include <string>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    char path[MAX_PATH] = {};
    const DWORD n = GetEnvironmentVariableA("HERALDER_RECORDER_FILE", path, sizeof path);
    if (n == 0 || n >= sizeof path) return 2;

    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    GetStartupInfoA(&startup);
    const int show = (startup.dwFlags & STARTF_USESHOWWINDOW) ? startup.wShowWindow : -1;
    const std::string line = std::to_string(show) + "\t" + GetCommandLineA() + "\n";

    // Append-only access keeps lines whole even if two stand-ins write at once.
    HANDLE file = CreateFileA(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                              OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return 1;
    DWORD written = 0;
    const BOOL ok =
        WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    CloseHandle(file);
    return ok && written == line.size() ? 0 : 1;
}
