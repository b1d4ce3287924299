#pragma once
// The icon button's choice of size, apart from the drawing so that it can be
// checked natively. Icons come in 16, 32, 64, 128 and 256 pixels; the button
// shows the largest that its smaller side leaves room for.

// Side of the icon drawn in a square of the given smaller side: the largest
// standard size that fits, never below 16.
int iconSizeFor(int side);
