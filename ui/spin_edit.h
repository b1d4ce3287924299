#pragma once
// Numeric fields: an edit control whose companion up-down control carries the
// field's bounds and first value as its own template text, "min,max,start".
// Reading that text and bounding what the user typed are kept here, apart
// from the controls, so that the rules can be checked without a display.
#include <optional>
#include <string_view>

struct SpinRange {
    int minimum = 0;
    int maximum = 100;
    int start = 0;
};

// Reads "min,max,start" as "%d,%d,%d" would: each number may follow spaces,
// the commas must follow the numbers directly, reading stops at the first
// part that does not fit. What is missing keeps its default (0, 100, 0).
SpinRange parseSpinRange(std::string_view text);

// value brought into the range; bounds given the wrong way round still
// bound the value between them.
int clampToRange(const SpinRange& range, long long value);

// The whole of text as a decimal number with an optional sign and spaces
// around it; nullopt for anything else (empty, letters, "12ab"). Numbers too
// long for any field saturate, so that they clamp to the maximum.
std::optional<long long> parseFieldNumber(std::string_view text);

// What a field holds: the typed number clamped to the range, or, when the
// text is not a number, fallback (the control's last good value) clamped.
int spinFieldValue(const SpinRange& range, std::string_view text, int fallback);
