// The yardstick of the start-up benchmark: the least a Win32 program does to
// fetch the update document, one WinINet GET from the same loopback server
// heralder.exe asks. Like every Win32 program it owns a (hidden) window, so
// the comparison measures heralder.exe's own work rather than the cost of
// being a windowed program under Wine; "/NOWINDOW" leaves the window out, for
// the figure against a program that has none.
#include <windows.h>
#include <wininet.h>

#include <cstring>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int) {
    HWND window = nullptr;
    if (!std::strstr(commandLine, "/NOWINDOW")) {
        WNDCLASSA wc = {};
        wc.lpfnWndProc = DefWindowProcA;
        wc.hInstance = instance;
        wc.lpszClassName = "MinimalGet";
        RegisterClassA(&wc);
        window = CreateWindowA("MinimalGet", "Minimal GET", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                               CW_USEDEFAULT, 460, 360, nullptr, nullptr, instance, nullptr);
    }
    int rc = 1;
    HINTERNET internet =
        InternetOpenA("Quenmark Heralder", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0);
    HINTERNET connection = internet ? InternetConnectA(internet, "127.0.0.1", 47632, "", "",
                                                       INTERNET_SERVICE_HTTP, 0, 0)
                                    : nullptr;
    HINTERNET request = connection
                            ? HttpOpenRequestA(connection, "GET", "/update/update.txt", "HTTP/1.0",
                                               nullptr, nullptr, INTERNET_FLAG_NO_CACHE_WRITE, 0)
                            : nullptr;
    if (request && HttpSendRequestA(request, nullptr, 0, nullptr, 0)) {
        static char body[1 << 20];
        DWORD read = 0;
        if (InternetReadFile(request, body, sizeof body, &read) && read > 0) rc = 0;
    }
    if (request) InternetCloseHandle(request);
    if (connection) InternetCloseHandle(connection);
    if (internet) InternetCloseHandle(internet);
    if (window) DestroyWindow(window);
    return rc;
}
