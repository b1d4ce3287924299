#pragma once
// The update document's reader. The publisher writes one plain-text document;
// this turns it into items, one per block, in document order. It is forgiving
// by design: nothing in the text is ever an error, whatever cannot be
// recognised is skipped. It never touches a window or the network, so the
// same code serves the agent, the publisher's tool, the tests and the fuzzer.
#include <string>
#include <string_view>
#include <vector>

#include "feed/update_item.h"

// Every line break becomes CR LF: CRs are dropped and every LF is written as
// CR LF. The document ends at its first NUL byte, as the agent's text did.
std::string normalizeLineEnds(std::string_view document);

// The items of a (normalised) document in document order. The text ends at its
// first NUL byte.
std::vector<UpdateItem> parseUpdateDocument(std::string_view document);
