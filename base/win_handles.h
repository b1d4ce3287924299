#pragma once
// The Windows handles the program owns, and scoped device-context helpers.
// Owned handles are UniqueHandle with traits: the kinds differ only in their
// "no handle" value (null, or INVALID_HANDLE_VALUE for files and searches) and
// in how they are released, so two small templates serve them all.
#include "base/unique_handle.h"
#include "base/win_headers.h"

template <class H, auto closeFn>
struct NullHandleTraits {
    using Handle = H;
    static Handle invalid() noexcept { return nullptr; }
    static void close(Handle h) noexcept { closeFn(h); }
};

template <class H, auto closeFn>
struct InvalidHandleTraits {
    using Handle = H;
    static Handle invalid() noexcept { return INVALID_HANDLE_VALUE; }
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
// Processes, threads, mutexes: kernel objects whose creators fail with null.
using UniqueKernelHandle = UniqueHandle<NullHandleTraits<HANDLE, CloseHandle>>;
// CreateFile's files and FindFirstFile's searches.
using UniqueFile = UniqueHandle<InvalidHandleTraits<HANDLE, CloseHandle>>;
using UniqueFind = UniqueHandle<InvalidHandleTraits<HANDLE, FindClose>>;

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
