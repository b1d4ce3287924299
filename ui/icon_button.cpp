// The icon button's size rule (see icon_button.h).
#include "ui/icon_button.h"

#include <initializer_list>

int iconSizeFor(int side) {
    for (int size : {256, 128, 64, 32})
        if (side > size) return size;
    return 16;
}
