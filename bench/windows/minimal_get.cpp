// The yardstick of the start-up benchmark: the least a Windows program can do
// to fetch the update document, one WinINet GET from the same loopback server
// heralder.exe asks, with nothing else loaded. heralder.exe "/UPDATE" with
// nothing new to show is measured against it.
#include <windows.h>
#include <wininet.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
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
    return rc;
}
