// Placeholder until the sound player lands.
#include "notify/sound_win.h"

namespace {
uint32_t muted = 0;
}

int32_t playNotifySound(const std::string&) {
    return 0;
}
uint32_t setSoundMute(uint32_t mute) {
    const uint32_t previous = muted;
    muted = mute;
    return previous;
}
