#pragma once
// Shared helpers of the Windows tests: the test script's settings, canvases read
// back pixel by pixel, screenshots, scratch registry keys. Plain Win32 only: the
// autopilot links it too.
#include <cstdint>
#include <string>
#include <vector>

#include "base/win_headers.h"

// The value of an environment variable set by scripts/test_wine.sh, or "".
std::string testEnv(const char* name);
std::string windowText(HWND hwnd);
std::string className(HWND hwnd);

// A 32-bit top-down memory bitmap filled with one colour, to draw into.
class Canvas {
  public:
    Canvas(int width, int height, COLORREF colour);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC dc() const { return dc_; }
    COLORREF at(int x, int y) const { return GetPixel(dc_, x, y); }
    // Every pixel, row by row, as 0x00RRGGBB.
    std::vector<uint32_t> pixels() const;
    // NAME.bmp in the test script's screenshot folder, if it named one.
    void save(const std::string& name) const;

  private:
    int width_, height_;
    void* bits_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HDC dc_ = nullptr;
    HGDIOBJ old_ = nullptr;
};

// What the screen shows of window hwnd, saved as by Canvas::save.
void saveWindowScreenshot(HWND hwnd, const std::string& name);

// Deletes the files (not the subfolders) of folder, which ends in a backslash.
void deleteFilesIn(const std::string& folder);

// Trusts the HTTPS tests' certificate authority (HERALDER_HTTPS_CA) in this
// throw-away prefix only: Wine's crypt32 keeps the machine's root store in the
// prefix's registry.
bool trustTestAuthority();

bool pathExists(const std::string& path);  // a file or a folder
std::string clipboardText();               // "" when it holds no text

// A registry key made for one test and removed, with all it holds, afterwards.
class ScratchKey {
  public:
    ScratchKey(HKEY root, std::string path);
    ~ScratchKey() { RegDeleteTreeA(root_, path_.c_str()); }
    ScratchKey(const ScratchKey&) = delete;
    ScratchKey& operator=(const ScratchKey&) = delete;

    bool created() const { return created_; }
    // name nullptr: the default value; subKey "": the key itself.
    bool set(const char* name, DWORD type, const void* data, DWORD size,
             const std::string& subKey = "");
    bool set(const char* name, const std::string& text, const std::string& subKey = "") {
        return set(name, REG_SZ, text.c_str(), DWORD(text.size() + 1), subKey);
    }

  private:
    HKEY root_;
    std::string path_;
    bool created_ = false;
};
