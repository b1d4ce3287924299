#pragma once
// The Windows handles the program owns, and scoped device-context helpers.
// Owned handles are UniqueHandle with traits: every kind held so far reports
// "no handle" as null and differs only in how it is released, so one template
// serves them all; a kind whose creator fails with INVALID_HANDLE_VALUE
// (CreateFile) needs traits of its own.
#include "base/unique_handle.h"
#include "base/win_headers.h"

template <class H, auto closeFn>
struct NullHandleTraits {
    using Handle = H;
    static Handle invalid() noexcept { return nullptr; }
    static void close(Handle h) noexcept { closeFn(h); }
};

using UniqueInternet = UniqueHandle<NullHandleTraits<HINTERNET, InternetCloseHandle>>;
using UniqueIcon = UniqueHandle<NullHandleTraits<HICON, DestroyIcon>>;
using UniqueFont = UniqueHandle<NullHandleTraits<HFONT, DeleteObject>>;
using UniqueBrush = UniqueHandle<NullHandleTraits<HBRUSH, DeleteObject>>;
using UniqueBitmap = UniqueHandle<NullHandleTraits<HBITMAP, DeleteObject>>;
using UniquePen = UniqueHandle<NullHandleTraits<HPEN, DeleteObject>>;
using UniqueMemoryDc = UniqueHandle<NullHandleTraits<HDC, DeleteDC>>;
using UniqueKey = UniqueHandle<NullHandleTraits<HKEY, RegCloseKey>>;
using UniqueModule = UniqueHandle<NullHandleTraits<HMODULE, FreeLibrary>>;

// A window's device context, released on scope exit.
class WindowDc {
  public:
    explicit WindowDc(HWND hwnd) : hwnd_(hwnd), dc_(GetDC(hwnd)) {}
    ~WindowDc() {
        if (dc_) ReleaseDC(hwnd_, dc_);
    }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    HDC get() const { return dc_; }

  private:
    HWND hwnd_;
    HDC dc_;
};

// SelectObject that puts the previous object back.
class ScopedSelect {
  public:
    ScopedSelect(HDC dc, HGDIOBJ obj) : dc_(dc), old_(obj ? SelectObject(dc, obj) : nullptr) {}
    ~ScopedSelect() {
        if (old_) SelectObject(dc_, old_);
    }
    ScopedSelect(const ScopedSelect&) = delete;
    ScopedSelect& operator=(const ScopedSelect&) = delete;

  private:
    HDC dc_;
    HGDIOBJ old_;
};
