#pragma once
// Fetching the update document with the kept copy's validators, and keeping
// what was fetched. Keeping is a call of its own, made by the caller once it
// has accepted the document's text, so that a document it refuses is never
// kept and never stands for the server's answer on a later day.
#include <optional>
#include <string>

#include "base/win_headers.h"
#include "feed/kept_document.h"

// The kept copy in the product folder; "" when there is no such folder.
std::string keptDocumentPath();

// nullopt when the file is missing, unreadable or damaged.
std::optional<KeptDocument> readKeptDocument(const std::string& path);
// Writes the whole copy to a temporary file and replaces the old one in one
// step, so that a crash leaves either copy whole, never half of one.
bool writeKeptDocument(const std::string& path, const KeptDocument& kept);

struct FetchedDocument {
    KeptDocument document;      // the text, with the validators it came with
    bool fromKeptCopy = false;  // the server said "not modified"
};

// GETs path from host, conditionally when a usable copy is kept at keptPath
// ("" for none). A 304 answer gives the kept copy as if the server had sent
// it; a 304 to an unconditional request, or any failure, is nullopt.
std::optional<FetchedDocument> fetchDocument(HWND owner, const std::string& host,
                                             const std::string& path, const std::string& keptPath);

// Keeps an accepted document for the next run's conditional request. A reply
// without validators cannot be asked about again: any older copy goes, so
// that its validators are not sent for a document they do not describe.
void keepFetchedDocument(const std::string& keptPath, const FetchedDocument& fetched);
