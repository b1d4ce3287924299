// The bounded list of a check's findings (see document_findings.h).
#include "check/document_findings.h"

#include <algorithm>
#include <string>

namespace {

bool lineBefore(const Finding& a, const Finding& b) {
    return a.line < b.line;
}

void insertInOrder(std::vector<Finding>& list, Finding finding) {
    list.insert(std::upper_bound(list.begin(), list.end(), finding, lineBefore),
                std::move(finding));
}

std::string counted(int n, const char* what) {
    return std::to_string(n) + " " + what + (n == 1 ? "" : "s");
}

}  // namespace

void FindingList::add(Finding finding) {
    kept_.push_back(std::move(finding));
    // Whatever is dropped here has kMaxFindings findings before it already, so
    // it could never be among the first.
    if (kept_.size() >= 2 * kMaxFindings) keepFirst();
}

void FindingList::addAlways(Finding finding) {
    always_.push_back(std::move(finding));
}

void FindingList::keepFirst() {
    std::stable_sort(kept_.begin(), kept_.end(), lineBefore);
    if (kept_.size() <= kMaxFindings) return;
    for (auto f = kept_.begin() + kMaxFindings; f != kept_.end(); ++f) {
        ++(f->severity == FindingSeverity::Error ? droppedErrors_ : droppedWarnings_);
        firstDroppedLine_ = std::min(firstDroppedLine_.value_or(f->line), f->line);
    }
    kept_.resize(kMaxFindings);
}

std::vector<Finding> FindingList::take() {
    keepFirst();
    if (firstDroppedLine_)
        insertInOrder(
            kept_,
            {*firstDroppedLine_, droppedErrors_ ? FindingSeverity::Error : FindingSeverity::Warning,
             "too many findings: " + counted(droppedErrors_, "more error") + " and " +
                 counted(droppedWarnings_, "more warning") + " from here on are not listed"});
    for (Finding& f : always_) insertInOrder(kept_, std::move(f));
    always_.clear();
    return std::move(kept_);
}
