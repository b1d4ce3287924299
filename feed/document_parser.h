#pragma once
// The update document's reader. The publisher writes one plain-text document;
// this turns it into items, one per block, in document order. It is forgiving
// by design: nothing in the text is ever an error, whatever cannot be
// recognised is skipped. It never touches a window or the network, so the
// same code serves the agent, the publisher's tool, the tests and the fuzzer.
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "feed/update_item.h"

// Every line break becomes CR LF: CRs are dropped and every LF is written as
// CR LF. The document ends at its first NUL byte, as the agent's text did.
std::string normalizeLineEnds(std::string_view document);

// The most items a document gives; the blocks after them are ignored. A
// real document holds tens of items, yet 64 MiB of empty blocks are millions:
// gigabytes in memory, and every item is asked about before the first window
// opens (each question looks at the seen list's file on disk).
inline constexpr std::size_t kMaxDocumentItems = 10000;

// The items of a (normalised) document in document order, the first
// kMaxDocumentItems of them. The text ends at its first NUL byte.
std::vector<UpdateItem> parseUpdateDocument(std::string_view document);

// The same items handed over one at a time, for readers that need not hold
// them all.
void forEachUpdateItem(std::string_view document, const std::function<void(UpdateItem&)>& visit);

// Where the first block that the item limit drops begins, if there is one.
std::optional<std::size_t> firstDroppedBlock(std::string_view document);
