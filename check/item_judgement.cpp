// The judgement of one block (see item_judgement.h).
#include "check/item_judgement.h"

#include <algorithm>

#include "base/ascii.h"
#include "check/document_check_text.h"
#include "check/document_check_values.h"
#include "feed/feed_date.h"
#include "notify/url_policy.h"

using document::documentKeys;
using document::KeyKind;
using namespace checktext;

namespace {

constexpr FindingSeverity E = FindingSeverity::Error;
constexpr FindingSeverity W = FindingSeverity::Warning;

struct Requirement {
    std::string_view key;
    FindingSeverity severity;
    const char* why;
};

constexpr const char* kLookupWhy =
    "the agent finds the installed version with it; without it only users who chose "
    "\"Always\" see the item";

bool showsWindow(ItemType t) {
    return t == ItemType::Alert || t == ItemType::Version || t == ItemType::Tip ||
           t == ItemType::Notice || t == ItemType::OffTopic;
}

std::vector<Requirement> requirementsOf(ItemType type) {
    std::vector<Requirement> r = {{"NUMBER", E, "the seen list keys on it"}};
    switch (type) {
        case ItemType::Alert:
            r.push_back({"IMPORTANCE", W, "users who chose alerts by importance never see it"});
            [[fallthrough]];
        case ItemType::Tip:
        case ItemType::Notice:
        case ItemType::OffTopic:
            r.push_back({"TITLE", E, "the window's headline"});
            r.push_back({"PLAINTEXT", E, "the window's text"});
            break;
        case ItemType::Version:
            r.push_back({"TITLE", E, "the window's headline"});
            r.push_back({"APPLICATION", E, "the product it announces"});
            r.push_back({"VERSION", E, "the version it announces"});
            // The default choice for versions asks for the installed version.
            r.push_back({"INIFILE", W, kLookupWhy});
            r.push_back({"SECTION", W, kLookupWhy});
            r.push_back({"PLAINTEXT", W, "the item browser's text"});
            break;
        case ItemType::SettingUpdate:
            r.push_back({"PLAINTEXT", E, "the setting to change"});
            break;
        case ItemType::GraphicUpdate:
            r.push_back({"URL", E, "the picture to fetch"});
            break;
        case ItemType::Unknown:
            break;
    }
    return r;
}

}  // namespace

int keyIndex(std::string_view name) {
    auto keys = documentKeys();
    for (std::size_t k = 0; k < keys.size(); ++k)
        if (keys[k].name == name) return static_cast<int>(k);
    return -1;
}

std::string_view ItemJudge::valueOf(const KeyHit& hit, int key) const {
    std::size_t start = document::valueStart(text_, hit.line, documentKeys()[key].name);
    return start < hit.end ? text_.substr(start, hit.end - start) : std::string_view();
}

UpdateItem ItemJudge::itemOf(const Segment& seg) const {
    UpdateItem item;
    item.type = seg.type;
    auto keys = documentKeys();
    for (std::size_t k = 0; k < keys.size(); ++k) {
        if (!seg.keys[k]) continue;
        const KeyHit& hit = *seg.keys[k];
        std::size_t start = document::valueStart(text_, hit.line, keys[k].name);
        switch (keys[k].kind) {
            case KeyKind::Text:
                item.*keys[k].text = document::textValue(text_, start, std::max(start, hit.end));
                break;
            case KeyKind::Number:
                item.*keys[k].value = document::numberValue(text_, start);
                break;
            case KeyKind::Letter:
                item.*keys[k].value = document::letterValue(text_, start);
                break;
        }
    }
    return item;
}

const KeyHit* ItemJudge::hit(const Segment& seg, std::string_view key) const {
    int k = keyIndex(key);
    return seg.keys[k] ? &*seg.keys[k] : nullptr;
}

void ItemJudge::judge(const Segment& seg, bool complete) {
    const UpdateItem item = itemOf(seg);
    if (complete) checkPresence(seg);
    checkNumbers(seg, item);
    checkDates(seg);
    if (showsWindow(seg.type)) {
        checkUrl(seg, item);
        if (const KeyHit* h = hit(seg, "GRAPHIC"))
            addVerdicts(h->lineNumber, judgePicture(item, images_));
    }
    // An empty PLAINTEXT or URL is reported as missing.
    const KeyHit* h = hit(seg, seg.type == ItemType::SettingUpdate ? "PLAINTEXT" : "URL");
    if (seg.type == ItemType::SettingUpdate && h && !trimmed(*item.plainText).empty())
        addVerdicts(h->lineNumber, judgeSettingUpdate(*item.plainText));
    if (seg.type == ItemType::GraphicUpdate && h && !trimmed(*item.url).empty())
        addVerdicts(h->lineNumber, judgeGraphicUpdateUrl(*item.url, images_));
}

void ItemJudge::checkPresence(const Segment& seg) {
    const std::string typeName = itemTypeName(seg.type);
    std::vector<bool> answered(documentKeys().size());
    const std::vector<Requirement> required = requirementsOf(seg.type);
    auto requirementOf = [&](int key) -> const Requirement* {
        for (const Requirement& r : required)
            if (key >= 0 && r.key == documentKeys()[key].name) return &r;
        return nullptr;
    };
    for (const UnknownKeyLine& u : seg.unknownKeys) {
        const Requirement* r = requirementOf(u.suggestion);
        const bool lacking = r && !seg.keys[u.suggestion];
        std::string text;
        if (u.suggestion >= 0 && u.hiddenByBlank)
            text = "the blank before " + std::string(documentKeys()[u.suggestion].name) +
                   " hides the key: the agent ignores this line";
        else if (u.suggestion >= 0)
            text = quoted(u.word) + " is not a key (did you mean " +
                   std::string(documentKeys()[u.suggestion].name) + "?)";
        else if (!u.word.empty())
            text = quoted(u.word) + " is not a key: the agent ignores this line";
        else if (u.braceFirst)
            text = "a value in braces must begin on its key's line: the agent ignores this line";
        else
            text = "not a key: the agent ignores this line";
        if (u.suggestion < 0 && u.afterTextKey && !u.braceFirst)
            text += " (a text of several lines needs braces: PLAINTEXT = {...})";
        if (lacking) {
            answered[u.suggestion] = true;
            text += ", so the " + typeName + " has no " + std::string(r->key);
        }
        add(u.lineNumber, lacking ? r->severity : W, text);
    }
    for (const Requirement& r : required) {
        const int k = keyIndex(r.key);
        if (answered[k]) continue;
        const KeyHit* h = seg.keys[k] ? &*seg.keys[k] : nullptr;
        if (!h)
            add(seg.lineNumber, r.severity,
                typeName + " without " + std::string(r.key) + " (" + r.why + ")");
        else if (documentKeys()[k].kind == KeyKind::Text && trimmed(valueOf(*h, k)).empty())
            add(h->lineNumber, r.severity, std::string(r.key) + " is empty (" + r.why + ")");
    }
}

void ItemJudge::checkNumbers(const Segment& seg, const UpdateItem& item) {
    auto keys = documentKeys();
    for (std::size_t k = 0; k < keys.size(); ++k) {
        if (!seg.keys[k] || keys[k].kind == KeyKind::Text) continue;
        const KeyHit& h = *seg.keys[k];
        const std::string_view value = trimmed(valueOf(h, static_cast<int>(k)));
        const std::string name(keys[k].name);
        const int32_t read = item.*keys[k].value;
        if (keys[k].kind == KeyKind::Letter) {
            if (value.size() != 1 || value[0] < 'a' || value[0] > 'z')
                add(h.lineNumber, W,
                    name + " takes one lower-case letter; the agent compares " +
                        (value.empty() ? std::string("the line break")
                                       : quoted(value.substr(0, 1))) +
                        " with the installed one");
            continue;
        }
        const bool isNumber = name == "NUMBER";
        if (!isPlainInteger(value)) {
            add(h.lineNumber, isNumber ? E : W,
                name +
                    (value.empty() ? " has no value" : " " + quoted(value) + " is not a number") +
                    ": the agent reads " + std::to_string(read));
        } else if (isNumber && read == 0) {
            add(h.lineNumber, E, "NUMBER 0 is every unnumbered item's number: use a new one");
        } else if (name == "IMPORTANCE" && seg.type == ItemType::Alert && (read < 1 || read > 3)) {
            add(h.lineNumber, W, "IMPORTANCE is 1 (low), 2 (medium) or 3 (high)");
        }
        if (isNumber && isPlainInteger(value) && read != 0) {
            auto [it, inserted] = numbers_.emplace(read, h.lineNumber);
            if (!inserted)
                add(h.lineNumber, E,
                    "NUMBER " + std::to_string(read) + " is also the item's at line " +
                        std::to_string(it->second) +
                        ": once one is seen, the agent never shows the other");
        }
    }
}

void ItemJudge::checkDates(const Segment& seg) {
    for (std::string_view key : {std::string_view("DATE"), std::string_view("IGNOREUNTIL")}) {
        const KeyHit* h = hit(seg, key);
        if (!h) continue;
        std::string_view value = trimmed(valueOf(*h, keyIndex(key)));
        if (value.empty() || isFeedDate(value)) continue;
        const bool hold = key == "IGNOREUNTIL";
        add(h->lineNumber, hold ? E : W,
            std::string(key) + " " + quoted(value) + " is not a month-day-year date (MM-DD-YYYY" +
                dateOrderHint(value) + ")" +
                (hold ? ": the agent holds the item back by a wrong day" : ""));
    }
}

void ItemJudge::checkUrl(const Segment& seg, const UpdateItem& item) {
    const KeyHit* h = hit(seg, "URL");
    if (!h || trimmed(*item.url).empty() || isWebAddress(*item.url)) return;
    const std::string_view url = *item.url;
    const bool web = equalsIgnoringAsciiCase(url.substr(0, 7), "http://") ||
                     equalsIgnoringAsciiCase(url.substr(0, 8), "https://");
    add(h->lineNumber, E,
        "URL " + quoted(*item.url) +
            (web ? " is not a well-formed web address (no host, or a blank, quote, "
                   "backslash, angle bracket, control character, bad %-escape or "
                   "character above 126 in it)"
                 : " does not begin with http:// or https://") +
            ": the agent will not open it");
}

void ItemJudge::addVerdicts(int line, const std::vector<Verdict>& verdicts) {
    for (const Verdict& v : verdicts) add(line, v.severity, v.text);
}
