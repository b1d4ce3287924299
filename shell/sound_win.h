#pragma once
// Notification sounds: a sound name ("", "~~~DEFAULT~~~",
// "::RSRC::id[,module]" or a wave file's path), played asynchronously unless
// the process-wide mute switch is set; "Notify.wav" in the user's data folder
// overrides every sound.
#include <cstdint>
#include <functional>
#include <string>

#include "shell/sound_choice.h"

// Non-zero when a sound was started.
int32_t playNotifySound(const std::string& soundName);
// Sets the mute switch (0: sounds allowed); returns the previous value.
uint32_t setSoundMute(uint32_t mute);

// Where a chosen sound goes: PlaySound, unless a test listens in its place
// (the test machine may have no sound device). Returns the output replaced.
using SoundOutput = std::function<int32_t(const SoundAttempt&)>;
SoundOutput setSoundOutput(SoundOutput output);

// What the system says about the sounds right now: the mute switch, the
// override file, and, when soundName is the default sound, the desktop scheme's
// navigation sound and the Windows folder.
SoundFacts gatherSoundFacts(const std::string& soundName);
