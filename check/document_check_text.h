#pragma once
// The small text tools of the document check (document_check.h): line
// numbers as the publisher's editor counts them, how near a typo is to a
// known name, and what the agent's atoi and date reading make of a value.
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace checktext {

bool isBlank(char c);
// Without the control characters and blanks around it.
std::string_view trimmed(std::string_view s);
// A value as the publisher wrote it, fit to stand in a one-line message.
std::string quoted(std::string_view value);

// Optimal string alignment distance, ASCII case folded: a swapped pair of
// letters ("TITEL") costs one, as a publisher's typo does.
std::size_t editDistance(std::string_view a, std::string_view b);
bool withinDistance(std::string_view a, std::string_view b, std::size_t limit);
// The name nearest to word, if it is within limit.
std::optional<std::string_view> nearest(std::string_view word,
                                        std::span<const std::string_view> names, std::size_t limit);
// The leading word of a line: letters, digits and "_", after a ":" when the
// line begins with one; with joinBlanks, blanks inside it (":BEGIN ALERT")
// are dropped.
std::string leadingWord(std::string_view line, bool joinBlanks);

// "-12", "+7", "2101": a number that atoi reads completely and keeps.
bool isPlainInteger(std::string_view s);
// Whether atoi finds any digits at all, or gives 0 for want of them.
bool startsWithNumber(std::string_view s);
// MM-DD-YYYY, a real day of a year from 2000 on; blanks may follow.
bool isFeedDate(std::string_view value);
// ", month first" or ", year last" when the value looks like a date written
// the other way round; empty otherwise.
std::string dateOrderHint(std::string_view value);

// What the author meant by a lone CR: a line end. The agent drops it and
// joins the lines; that is reported once, and the rest is judged as meant.
std::string withLoneCrsAsLineEnds(std::string_view raw);

// Line numbers as an editor shows them (after LF, CR LF or a lone CR), for
// offsets into the text as parsed (withLoneCrsAsLineEnds, then CR LF line
// ends throughout).
class LineNumbers {
  public:
    explicit LineNumbers(std::string_view raw);
    int at(std::size_t offset) const;
    int count() const { return static_cast<int>(starts_.size()); }
    int loneCrs() const { return loneCrs_; }
    int firstLoneCr() const { return firstLoneCr_; }

  private:
    std::vector<std::size_t> starts_;
    int loneCrs_ = 0;
    int firstLoneCr_ = 0;
};

}  // namespace checktext
