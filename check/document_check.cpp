// The publisher's document check (see document_check.h).
//
// The walk goes over the logical lines exactly as the agent's reader finds
// them, so a brace left open or a lone CR shows here as it would in the
// agent. Items, though, are judged as the author meant them: a begin marker
// always starts a new one, even where the agent would still be inside the
// block before. The missing ":END" is then reported once, at the block it
// swallowed, and the item checks describe the document as it will be once
// that one mistake is fixed, instead of repeating it as missing keys. This file
// is the walk over the lines; what a complete block is worth is judged in
// item_judgement.cpp.
#include "check/document_check.h"

#include <algorithm>

#include "base/ascii.h"
#include "feed/document_parser.h"
#include "feed/document_parser_detail.h"
#include "check/document_check_text.h"
#include "check/document_findings.h"
#include "check/item_judgement.h"

namespace {

using document::documentKeys;
using document::kEndMarker;
using document::KeyKind;
using document::lineStartsWith;
using document::Position;
using namespace checktext;

constexpr std::string_view kBom = "\xEF\xBB\xBF";
constexpr FindingSeverity E = FindingSeverity::Error;
constexpr FindingSeverity W = FindingSeverity::Warning;

std::vector<std::string_view> markerNames() {
    std::vector<std::string_view> names;
    for (const document::MarkerDef& m : document::blockMarkers()) names.push_back(m.marker);
    names.push_back(kEndMarker);
    return names;
}

std::vector<std::string_view> keyNames() {
    std::vector<std::string_view> names;
    for (const document::KeyDef& k : documentKeys()) names.push_back(k.name);
    return names;
}

std::string_view markerOf(ItemType type) {
    for (const document::MarkerDef& m : document::blockMarkers())
        if (m.type == type) return m.marker;
    return "?";
}

class Checker {
  public:
    Checker(std::string_view raw, const ImageReader& images)
        : raw_(document::documentText(raw)),
          whole_(raw),
          normalised_(normalizeLineEnds(withLoneCrsAsLineEnds(raw_))),
          text_(normalised_),
          lines_(raw_),
          images_(images) {}

    std::vector<Finding> run() {
        checkBytes();
        Position p = text_.empty() ? Position{} : Position{0};
        while (p) {
            std::size_t end = document::lineEnd(text_, *p);
            if (end > *p) handleLine(*p, end);
            p = document::nextLine(text_, *p);
        }
        if (open_) {
            if (!unclosedBrace_)
                add(open_->lineNumber, W,
                    std::string(markerOf(open_->type)) +
                        " block has no :END: the agent reads it to the end of the document");
            // What the author meant to write after the brace is anyone's guess.
            judge_.judge(*open_, !unclosedBrace_);
        }
        if (segments_ == 0 && !hiddenByBom_ && !unclosedBrace_)
            add(1, W, "the document holds no item (no :BEGIN... marker)");
        if (const Position dropped = firstDroppedBlock(text_))
            findings_.addAlways(
                {lines_.at(*dropped), W,
                 "the agent reads the first " + std::to_string(kMaxDocumentItems) +
                     " items only: it ignores this block and every block after it"});
        return finish();
    }

  private:
    void add(int line, FindingSeverity severity, std::string text) {
        findings_.add({line, severity, std::move(text)});
    }

    std::vector<Finding> finish() { return findings_.take(); }

    std::string_view lineText(std::size_t start, std::size_t end) const {
        return text_.substr(start, end - start);
    }

    bool isEndLine(std::size_t p) const {
        // The agent misses an ":END" that is the very last text, but then
        // nothing follows it either: the block is read completely.
        return lineStartsWith(text_, p, kEndMarker) ||
               equalsIgnoringAsciiCase(text_.substr(p), kEndMarker);
    }

    int keyAt(std::size_t p) const {
        auto keys = documentKeys();
        for (std::size_t k = 0; k < keys.size(); ++k)
            if (lineStartsWith(text_, p, keys[k].name)) return static_cast<int>(k);
        return -1;
    }

    // Problems of the bytes themselves.
    void checkBytes() {
        std::string_view rest = whole_.substr(raw_.size());
        if (rest.find_first_not_of(std::string_view("\0 \t\r\n", 5)) != std::string_view::npos)
            add(lines_.count(), E,
                "NUL byte: the agent stops reading here and ignores the " +
                    std::to_string(rest.size() - 1) + " bytes after it");
        if (lines_.loneCrs() > 0 && raw_.find('\n') == std::string_view::npos) {
            add(1, E,
                "the line ends are CR only: the agent reads the whole document as one line "
                "(save it with CR LF or LF line ends)");
        } else if (lines_.loneCrs() > 0) {
            add(lines_.firstLoneCr(), E,
                "line ends with a lone CR: the agent joins it to the next line" +
                    (lines_.loneCrs() > 1
                         ? " (" + std::to_string(lines_.loneCrs()) + " lone CRs in the document)"
                         : std::string()));
        }
        if (raw_.starts_with(kBom)) {
            hasBom_ = true;
            if (document::blockType(text_, kBom.size()) != ItemType::Unknown) {
                hiddenByBom_ = true;
                add(1, E,
                    "the file begins with a UTF-8 byte-order mark, which hides this line's marker: "
                    "the agent skips the block (save the document as Windows-1252)");
            } else {
                add(1, W,
                    "the file begins with a UTF-8 byte-order mark: the agent reads Windows-1252 "
                    "text (save the document as Windows-1252)");
            }
        } else if (int line = firstUtf8Line()) {
            add(line, W,
                "text in UTF-8: the agent shows Windows-1252 text, so each accented letter "
                "shows as two or three wrong ones (save the document as Windows-1252)");
        }
    }

    // The line of the first well-formed multi-byte UTF-8 sequence, or 0.
    int firstUtf8Line() const {
        const std::string_view& s = text_;
        for (std::size_t i = 0; i < s.size(); ++i) {
            unsigned char c = static_cast<unsigned char>(s[i]);
            std::size_t follow = c >= 0xC2 && c <= 0xDF   ? 1
                                 : c >= 0xE0 && c <= 0xEF ? 2
                                 : c >= 0xF0 && c <= 0xF4 ? 3
                                                          : 0;
            if (follow == 0 || i + follow >= s.size()) continue;
            bool ok = true;
            for (std::size_t k = 1; k <= follow; ++k)
                ok = ok && (static_cast<unsigned char>(s[i + k]) & 0xC0) == 0x80;
            if (ok) return lines_.at(i);
        }
        return 0;
    }

    // Braces toggle within one logical line; report the one thing that went
    // wrong with them there, the worst first.
    void checkBraces(std::size_t start, std::size_t end) {
        bool open = false;
        std::size_t openAt = 0;
        std::optional<std::size_t> nested, stray, hiddenOpen, hiddenAt, hiddenClose;
        for (std::size_t i = start; i < end; ++i) {
            char c = text_[i];
            if (c == '{') {
                if (!open)
                    open = true, openAt = i;
                else if (!nested)
                    nested = i;
            } else if (c == '}') {
                if (open) {
                    open = false;
                    if (hiddenOpen == openAt && !hiddenClose) hiddenClose = i;
                } else if (!stray) {
                    stray = i;
                }
            } else if (c == '\n' && open && !hiddenAt && i + 1 < text_.size() &&
                       (document::blockType(text_, i + 1) != ItemType::Unknown ||
                        isEndLine(i + 1))) {
                hiddenOpen = openAt, hiddenAt = i + 1;
            }
        }
        if (open) {
            unclosedBrace_ = true;
            add(lines_.at(openAt), E,
                "'{' is never closed: the agent reads the rest of the document (to line " +
                    std::to_string(lines_.at(text_.size() - 1)) + ") as part of this line");
        } else if (hiddenAt) {
            std::string marker = leadingWord(text_.substr(*hiddenAt, 40), false);
            add(lines_.at(*hiddenOpen), E,
                "'{' is closed only at line " + std::to_string(lines_.at(*hiddenClose)) +
                    ", so the " + marker + " at line " + std::to_string(lines_.at(*hiddenAt)) +
                    " is read as text (a '}' is missing)");
        } else if (nested) {
            add(lines_.at(*nested), W,
                "'{' inside braces: braces do not nest, the first '}' closes them "
                "(is a '}' missing before it?)");
        } else if (stray) {
            add(lines_.at(*stray), W, "'}' without '{': the agent drops it");
        }
    }

    void handleLine(std::size_t start, std::size_t end) {
        const int lineNumber = lines_.at(start);
        checkBraces(start, end);
        std::string_view line = lineText(start, end);
        if (start == 0 && hasBom_) {
            line.remove_prefix(std::min(line.size(), kBom.size()));
            if (hiddenByBom_) {
                skipping_ = true;
                return;
            }
        }

        if (ItemType type = document::blockType(text_, start); type != ItemType::Unknown) {
            outsideRun_ = false;
            skipping_ = false;
            if (open_) {
                add(lineNumber, E,
                    "this " + std::string(markerOf(type)) + " block is swallowed: the " +
                        std::string(markerOf(open_->type)) + " block at line " +
                        std::to_string(open_->lineNumber) +
                        " has no :END before it, so the agent reads both as one item");
                judge_.judge(*open_);
            }
            open_ = Segment{};
            open_->type = type;
            open_->lineNumber = lineNumber;
            ++segments_;
            return;
        }
        if (isEndLine(start)) {
            if (open_) {
                judge_.judge(*open_);
                open_.reset();
            } else if (!skipping_) {
                add(lineNumber, W, "':END' outside any block: no block is open");
            }
            skipping_ = false;
            outsideRun_ = false;
            return;
        }
        const int key = keyAt(start);
        if (open_) {
            if (key >= 0) {
                recordKey(*open_, key, start, end, lineNumber);
                return;
            }
            handleOtherLineInBlock(line, lineNumber);
            return;
        }
        if (skipping_) return;
        if (key >= 0) {
            outsideRun_ = false;
            add(lineNumber, W,
                "key " + std::string(documentKeys()[key].name) +
                    " outside any block: the agent ignores it");
            return;
        }
        handleOtherLineOutside(line, lineNumber);
    }

    void recordKey(Segment& seg, int key, std::size_t start, std::size_t end, int lineNumber) {
        if (seg.keys[key]) {
            add(lineNumber, W,
                std::string(documentKeys()[key].name) + " again: the agent uses the one at line " +
                    std::to_string(seg.keys[key]->lineNumber));
            return;
        }
        seg.keys[key] = KeyHit{start, end, lineNumber};
        seg.lastLineTextKey = documentKeys()[key].kind == KeyKind::Text;
    }

    // A marker the agent does not know, by its leading word; nullopt when the
    // line does not look like a marker at all.
    std::optional<std::string> unknownMarker(std::string_view line, std::string_view& suggestion) {
        std::string_view body = line.substr(std::min(line.find_first_not_of(' '), line.size()));
        const bool blank = body.size() != line.size();
        std::string word = leadingWord(body, true);
        static const std::vector<std::string_view> markers = markerNames();
        if (word.starts_with(':')) {
            // A lone ":" or a smiley is no marker gone wrong.
            const std::size_t limit = std::clamp<std::size_t>(word.size() / 3, 1, 3);
            if (auto m = nearest(word, markers, limit)) suggestion = *m;
            if (blank && equalsIgnoringAsciiCase(word, suggestion))
                return "the blank before " + std::string(suggestion) +
                       " hides the marker from the agent";
            return quoted(trimmed(body)) + " is not a marker" +
                   (suggestion.empty() ? "" : " (did you mean " + std::string(suggestion) + "?)");
        }
        // Without its ":" only a close match counts: "and" is not ":END".
        for (std::string_view m : markers)
            if (withinDistance(word, m.substr(1), m.size() > 6 ? 1 : 0)) {
                suggestion = m;
                return quoted(word) + " is not a marker (did you mean " + std::string(m) + "?)";
            }
        return std::nullopt;
    }

    void handleOtherLineInBlock(std::string_view line, int lineNumber) {
        Segment& seg = *open_;
        if (line.starts_with(';')) return;
        std::string_view markerSuggestion;
        if (std::optional<std::string> marker = unknownMarker(line, markerSuggestion)) {
            if (markerSuggestion == kEndMarker) {
                add(lineNumber, E,
                    *marker + ": the block at line " + std::to_string(seg.lineNumber) +
                        " stays open and takes in what follows, up to the next :END");
                judge_.judge(seg);
                open_.reset();
                skipping_ = true;
            } else {
                add(lineNumber, E, *marker + ": the agent ignores this line");
            }
            return;
        }
        std::string_view body = line.substr(std::min(line.find_first_not_of(' '), line.size()));
        std::string word = leadingWord(body, false);
        static const std::vector<std::string_view> keys = keyNames();
        int suggestion = -1;
        bool hidden = false;
        if (body.size() != line.size()) {
            for (std::size_t k = 0; k < keys.size(); ++k)
                if (lineStartsWith(body, 0, keys[k]) || equalsIgnoringAsciiCase(body, keys[k]))
                    suggestion = static_cast<int>(k), hidden = true;
        }
        if (!hidden && !word.empty())
            if (auto k = nearest(word, keys, word.size() >= 5 ? 2 : 1)) suggestion = keyIndex(*k);
        seg.unknownKeys.push_back({lineNumber, word, suggestion, hidden,
                                   seg.lastLineTextKey && line.find('=') == std::string_view::npos,
                                   line.starts_with('{')});
        seg.lastLineTextKey = false;
    }

    void handleOtherLineOutside(std::string_view line, int lineNumber) {
        std::string_view suggestion;
        if (line.starts_with(';')) {
            outsideRun_ = false;
            return;
        }
        if (std::optional<std::string> marker = unknownMarker(line, suggestion)) {
            outsideRun_ = false;
            if (suggestion == kEndMarker) {
                add(lineNumber, W, *marker + ", and no block is open");
            } else {
                add(lineNumber, E, *marker + ": the agent skips this block");
                skipping_ = true;
            }
            return;
        }
        if (!outsideRun_)
            add(lineNumber, W,
                "text outside any block: the agent ignores it (begin comment lines with ';')");
        outsideRun_ = true;
    }

    std::string_view raw_;    // up to the first NUL, as the agent sees it
    std::string_view whole_;  // every byte of the file
    std::string normalised_;
    std::string_view text_;
    LineNumbers lines_;
    const ImageReader& images_;
    FindingList findings_;
    std::optional<Segment> open_;
    int segments_ = 0;
    bool skipping_ = false;    // inside a block the agent does not see
    bool outsideRun_ = false;  // the text outside blocks here is already reported
    bool hasBom_ = false;
    bool hiddenByBom_ = false;
    bool unclosedBrace_ = false;
    ItemJudge judge_{text_, images_, findings_};  // after what it is handed
};

}  // namespace

std::vector<Finding> checkUpdateDocument(std::string_view fileBytes, const ImageReader& images) {
    return Checker(fileBytes, images).run();
}

bool hasErrors(const std::vector<Finding>& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& f) { return f.severity == FindingSeverity::Error; });
}

std::string formatFindings(std::string_view fileName, const std::vector<Finding>& findings) {
    std::string out;
    int errors = 0, warnings = 0;
    for (const Finding& f : findings) {
        const bool error = f.severity == FindingSeverity::Error;
        (error ? errors : warnings) += 1;
        out += std::string(fileName) + ":" + std::to_string(f.line) + ": " +
               (error ? "error: " : "warning: ") + f.text + "\n";
    }
    auto count = [](int n, const char* what) {
        return std::to_string(n) + " " + what + (n == 1 ? "" : "s");
    };
    return out + std::string(fileName) + ": " + count(errors, "error") + ", " +
           count(warnings, "warning") + "\n";
}
