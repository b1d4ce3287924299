#pragma once
// The Windows handle kinds the program owns, as UniqueHandle traits. Kernel
// objects come in two flavours because CreateFile reports failure with
// INVALID_HANDLE_VALUE while most other creators return null.
#include "base/unique_handle.h"
#include "base/win_headers.h"

struct InternetHandleTraits {
    using Handle = HINTERNET;
    static Handle invalid() noexcept { return nullptr; }
    static void close(Handle h) noexcept { InternetCloseHandle(h); }
};

struct RegKeyTraits {
    using Handle = HKEY;
    static Handle invalid() noexcept { return nullptr; }
    static void close(Handle h) noexcept { RegCloseKey(h); }
};

struct KernelHandleTraits {
    using Handle = HANDLE;
    static Handle invalid() noexcept { return nullptr; }
    static void close(Handle h) noexcept { CloseHandle(h); }
};

struct FileHandleTraits {
    using Handle = HANDLE;
    static Handle invalid() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(Handle h) noexcept { CloseHandle(h); }
};

// Typed, so that a font owner hands back an HFONT, not an HGDIOBJ to cast.
template <class T = HGDIOBJ>
struct GdiObjectTraits {
    using Handle = T;
    static Handle invalid() noexcept { return nullptr; }
    static void close(Handle h) noexcept { DeleteObject(h); }
};

struct IconTraits {
    using Handle = HICON;
    static Handle invalid() noexcept { return nullptr; }
    static void close(Handle h) noexcept { DestroyIcon(h); }
};

using UniqueInternet = UniqueHandle<InternetHandleTraits>;
using UniqueRegKey = UniqueHandle<RegKeyTraits>;
using UniqueKernelHandle = UniqueHandle<KernelHandleTraits>;
using UniqueFileHandle = UniqueHandle<FileHandleTraits>;
using UniqueGdiObject = UniqueHandle<GdiObjectTraits<>>;
using UniqueFont = UniqueHandle<GdiObjectTraits<HFONT>>;
using UniqueBrush = UniqueHandle<GdiObjectTraits<HBRUSH>>;
using UniqueBitmap = UniqueHandle<GdiObjectTraits<HBITMAP>>;
using UniqueIcon = UniqueHandle<IconTraits>;
