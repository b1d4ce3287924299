#pragma once
// The one place that includes the Windows headers, so that any MinGW-w64
// workaround lives here and nowhere else. Platform files include this instead
// of <windows.h>.
#include <windows.h>
#include <windowsx.h>
#include <commctrl.h>
#include <shlobj.h>
#include <shellapi.h>
#include <wininet.h>
#include <mmsystem.h>

// MinGW's <windowsx.h> lacks none of the crackers we use; undo the macros that
// collide with standard library names.
#ifdef min
#undef min
#endif
#ifdef max
#undef max
#endif
