// Placeholder until the list markers land.
#include "ui/list_marker_win.h"

void drawListMarker(HDC, const RECT&, int, COLORREF) {}
