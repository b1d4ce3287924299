// Which sound a notification plays, from every form of the sound name, the
// override file and the desktop scheme, and what the attempts' results give.
#include <gtest/gtest.h>

// GCC 12 warns about every member a designated initializer leaves to its default.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

#include <tuple>

#include "shell/sound_choice.h"

namespace {

using Kind = SoundAttempt::Kind;

SoundAttempt file(std::string path, bool forceOne = false) {
    return {.path = std::move(path), .forceOne = forceOne};
}

SoundAttempt resource(int32_t id, std::optional<intptr_t> module = std::nullopt) {
    return {.kind = Kind::Resource, .resourceId = id, .module = module};
}

const std::string kOverride = "C:\\Users\\me\\AppData\\Roaming\\Quenmark\\Notify.wav";
const std::string kFallback = "C:\\windows\\media\\Windows Navigation Start.wav";

SoundFacts facts(bool withOverride, bool keyOpened = false, std::string scheme = "") {
    return {.overrideFile = withOverride ? std::optional(kOverride) : std::nullopt,
            .schemeKeyOpened = keyOpened,
            .schemeSound = std::move(scheme),
            .windowsFolder = "C:\\windows"};
}

// Answers from a list of results and records what it was asked.
struct FakePlayer {
    std::vector<int32_t> results;
    std::vector<std::string> played;
    int32_t operator()(const SoundAttempt& a) {
        played.push_back(a.kind == Kind::File ? a.path : "#" + std::to_string(a.resourceId));
        return played.size() <= results.size() ? results[played.size() - 1] : 0;
    }
};

TEST(SoundChoice, EveryFormOfTheSoundName) {
    const std::string def(kDefaultSoundName), ding = "C:\\ding.wav", nav = "C:\\nav.wav";
    SoundFacts muted = facts(true, true, nav);
    muted.muted = true;
    const std::tuple<const char*, std::string, SoundFacts, std::vector<SoundAttempt>> cases[] = {
        {"empty", "", facts(true, true, nav), {}},
        {"muted", ding, muted, {}},
        {"muted default", def, muted, {}},
        {"file", ding, facts(false), {file(ding, true)}},
        {"file under override", ding, facts(true), {file(kOverride), file(ding, true)}},
        {"own resource", "::RSRC::7", facts(false), {resource(7)}},
        {"module taken literally", "::RSRC::7,0", facts(false), {resource(7, 0)}},
        {"module number", "::RSRC::12,4194304", facts(false), {resource(12, 4194304)}},
        {"numbers read as atoi", "::RSRC::7x,  9y", facts(false), {resource(7, 9)}},
        {"no number", "::RSRC::", facts(false), {resource(0)}},
        {"resource under override", "::RSRC::7", facts(true), {file(kOverride), resource(7)}},
        {"prefix is case-sensitive", "::rsrc::7", facts(false), {file("::rsrc::7", true)}},
        {"marker is case-sensitive", "~~~default~~~", facts(false), {file("~~~default~~~", true)}},
        {"default, no scheme key", def, facts(false), {}},
        {"default, no scheme key, override", def, facts(true), {file(kOverride)}},
        {"default, scheme sound", def, facts(false, true, nav), {file(nav), file(kFallback)}},
        {"default, key without a sound", def, facts(false, true), {file(kFallback)}},
        {"everything", def, facts(true, true, nav), {file(kOverride), file(nav), file(kFallback)}},
    };
    for (const auto& [name, soundName, facts, expected] : cases)
        EXPECT_EQ(chooseNotifySound(soundName, facts), expected) << name;
}

TEST(SoundChoice, FallbackPathGetsOneSeparatorAndFitsTheBuffer) {
    EXPECT_EQ(std::tuple(fallbackSoundPath("C:\\windows"), fallbackSoundPath("C:\\windows\\")),
              std::tuple(kFallback, kFallback));
    EXPECT_EQ(fallbackSoundPath(""), "\\media\\Windows Navigation Start.wav");
    EXPECT_EQ(fallbackSoundPath(std::string(250, 'w')).size(), 259u);
}

TEST(SoundChoice, FirstSoundThatStartsEndsTheCall) {
    const std::vector<SoundAttempt> overrideThenFile = {file("o.wav"), file("f.wav", true)};
    const std::vector<SoundAttempt> overrideThenResource = {file("o.wav"), resource(7)};
    const std::vector<SoundAttempt> scheme = {file("n.wav"), file("fallback.wav")};
    using Names = std::vector<std::string>;
    // The attempts, what the player answers to each, the result, what was played.
    const std::tuple<const char*, const std::vector<SoundAttempt>&, std::vector<int32_t>, int32_t,
                     Names>
        cases[] = {
            {"override plays", overrideThenFile, {1}, 1, {"o.wav"}},
            {"file forced to 1", overrideThenFile, {0, 0}, 1, {"o.wav", "f.wav"}},
            {"resource result", overrideThenResource, {0, 0}, 0, {"o.wav", "#7"}},
            {"resource plays", overrideThenResource, {0, 1}, 1, {"o.wav", "#7"}},
            {"scheme plays", scheme, {1}, 1, {"n.wav"}},
            {"fallback result", scheme, {0, 0}, 0, {"n.wav", "fallback.wav"}},
        };
    for (const auto& [name, attempts, results, expected, played] : cases) {
        FakePlayer player{results, {}};
        EXPECT_EQ(playAttempts(attempts, std::ref(player)), expected) << name;
        EXPECT_EQ(player.played, played) << name;
    }
    EXPECT_EQ(playAttempts({}, FakePlayer{{1}, {}}), 0);
}

}  // namespace
