#pragma once
// The findings of one document check, in line order and bounded. A document
// of a million faults is a broken file, not a list of a million fixes: only
// the first findings in line order are kept, then one that counts the rest.
// Keeping the first while they come, rather than sorting them all at the end,
// holds the memory to the kept ones however many there are.
#include <cstddef>
#include <optional>
#include <vector>

#include "check/document_check.h"

class FindingList {
  public:
    static constexpr std::size_t kMaxFindings = 1000;

    void add(Finding finding);
    // Listed whatever else is left out: it explains much of the rest.
    void addAlways(Finding finding);
    // The kept findings in line order (equal lines in the order they came),
    // with the count of the others where they would begin.
    std::vector<Finding> take();

  private:
    void keepFirst();

    std::vector<Finding> kept_;
    std::vector<Finding> always_;
    int droppedErrors_ = 0, droppedWarnings_ = 0;
    std::optional<int> firstDroppedLine_;
};
