// The choice of a notification sound (see sound_choice.h). The sound name's
// forms are told apart exactly as they always were: the default marker and the
// resource prefix compare case-sensitively, and the numbers are read as atoi
// reads them, so "::RSRC::7,0" names module 0 and not the program.
#include "shell/sound_choice.h"

#include "base/crt_text.h"

namespace {

constexpr std::size_t kPathBuffer = 260;

SoundAttempt fileAttempt(std::string path, bool forceOne = false) {
    SoundAttempt attempt;
    attempt.path = std::move(path);
    attempt.forceOne = forceOne;
    return attempt;
}

SoundAttempt resourceAttempt(std::string_view soundName) {
    SoundAttempt attempt;
    attempt.kind = SoundAttempt::Kind::Resource;
    const std::string_view rest = soundName.substr(kResourceSoundPrefix.size());
    attempt.resourceId = atoiLike(rest);
    const std::size_t comma = soundName.find(',');
    if (comma != std::string_view::npos) attempt.module = atoiLike(soundName.substr(comma + 1));
    return attempt;
}

}  // namespace

std::string cutToPathBuffer(std::string text) {
    if (text.size() > kPathBuffer - 1) text.resize(kPathBuffer - 1);
    return text;
}

std::string fallbackSoundPath(std::string_view windowsFolder) {
    std::string path(windowsFolder);
    if (path.empty() || path.back() != '\\') path += '\\';
    path += kFallbackSoundName;
    return cutToPathBuffer(std::move(path));
}

std::vector<SoundAttempt> chooseNotifySound(std::string_view soundName, const SoundFacts& facts) {
    std::vector<SoundAttempt> attempts;
    if (soundName.empty() || facts.muted) return attempts;
    // The user's own file wins over every form; when it cannot be played the
    // sound name still gets its turn.
    if (facts.overrideFile) attempts.push_back(fileAttempt(*facts.overrideFile));

    if (soundName != kDefaultSoundName) {
        if (soundName.substr(0, kResourceSoundPrefix.size()) != kResourceSoundPrefix)
            attempts.push_back(fileAttempt(std::string(soundName), true));
        else
            attempts.push_back(resourceAttempt(soundName));
        return attempts;
    }

    // A desktop without the scheme key has chosen no navigation sound: silence,
    // not the Windows folder's file.
    if (!facts.schemeKeyOpened) return attempts;
    if (!facts.schemeSound.empty()) attempts.push_back(fileAttempt(facts.schemeSound));
    attempts.push_back(fileAttempt(fallbackSoundPath(facts.windowsFolder)));
    return attempts;
}

int32_t playAttempts(const std::vector<SoundAttempt>& attempts,
                     const std::function<int32_t(const SoundAttempt&)>& play) {
    int32_t result = 0;
    for (const SoundAttempt& attempt : attempts) {
        result = play(attempt);
        if (attempt.forceOne) result = 1;
        if (result != 0) break;
    }
    return result;
}
