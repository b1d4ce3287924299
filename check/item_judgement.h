#pragma once
// The judgement of one block of an update document, once the walk over the
// lines has found where its keys stand: the keys an item needs, its numbers,
// dates, address, picture and update, each judged by the agent's own rules.
// Kept apart from the walk so that each reads on its own.
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/document_check.h"
#include "check/document_check_values.h"
#include "check/document_findings.h"
#include "feed/document_parser_detail.h"
#include "feed/update_item.h"

// Where a key of the block stands in the document's text.
struct KeyHit {
    std::size_t line = 0;  // where the key's line starts
    std::size_t end = 0;   // where it ends
    int lineNumber = 0;
};

struct UnknownKeyLine {
    int lineNumber;
    std::string word;
    int suggestion;  // key index or -1
    bool hiddenByBlank;
    bool afterTextKey;  // the line before was a text key's: its text goes on here
    bool braceFirst;
};

struct Segment {
    ItemType type = ItemType::Unknown;
    int lineNumber = 0;
    std::vector<std::optional<KeyHit>> keys =
        std::vector<std::optional<KeyHit>>(document::documentKeys().size());
    std::vector<UnknownKeyLine> unknownKeys;
    bool lastLineTextKey = false;
};

// The index of a key in the document's key table, or -1.
int keyIndex(std::string_view name);

class ItemJudge {
  public:
    ItemJudge(std::string_view text, const ImageReader& images, FindingList& findings)
        : text_(text), images_(images), findings_(findings) {}

    // Judges a block; an incomplete one (cut off by a brace never closed) is
    // not asked for the keys it lacks.
    void judge(const Segment& seg, bool complete = true);

  private:
    std::string_view valueOf(const KeyHit& hit, int key) const;
    UpdateItem itemOf(const Segment& seg) const;
    const KeyHit* hit(const Segment& seg, std::string_view key) const;
    void checkPresence(const Segment& seg);
    void checkNumbers(const Segment& seg, const UpdateItem& item);
    void checkDates(const Segment& seg);
    void checkUrl(const Segment& seg, const UpdateItem& item);
    void addVerdicts(int line, const std::vector<Verdict>& verdicts);
    void add(int line, FindingSeverity severity, std::string text) {
        findings_.add({line, severity, std::move(text)});
    }

    std::string_view text_;
    const ImageReader& images_;
    FindingList& findings_;
    std::map<int32_t, int> numbers_;  // NUMBER -> its line
};
