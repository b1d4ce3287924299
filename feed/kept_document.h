#pragma once
// The copy of the update document the agent keeps between runs, with the
// validators the server gave it (ETag, Last-Modified), so that the next fetch
// can ask "has it changed?" and a "304 Not Modified" costs the publisher a few
// hundred bytes instead of the whole document. The format is ours and is read
// strictly: a copy that is cut short, altered or not ours is unusable, and
// the run then fetches the whole document as if there were none.
#include <optional>
#include <string>
#include <string_view>

struct KeptDocument {
    std::string text;
    std::string etag;          // the ETag header's value as the server sent it
    std::string lastModified;  // the Last-Modified header's value
};

// The kept file's bytes, and back. parseKeptDocument refuses anything that is
// not exactly what formatKeptDocument writes (length and checksum included).
std::string formatKeptDocument(const KeptDocument& kept);
std::optional<KeptDocument> parseKeptDocument(std::string_view file);

// A validator is sent back in a request header: one that is empty, too long or
// holds a control character (a header of its own hidden in it) is not used.
bool isUsableValidator(std::string_view value);

// The request headers of a document fetch, in one place: ask for a compressed
// body, and with a kept copy that has a usable validator, only for a changed
// one ("If-None-Match" / "If-Modified-Since").
std::string documentRequestHeaders(const KeptDocument* kept);
// Whether documentRequestHeaders made the request conditional.
bool isConditionalRequest(const KeptDocument* kept);

// What a document reply stands for. Only a conditional request gives the
// status a meaning: 304 then means "the kept copy is still the document".
// Every other status is the file as it came, as ever (an error page is the
// document); a 304 that was not asked for has no text to stand for.
enum class DocumentReply { Body, KeptCopy, Failed };
DocumentReply judgeDocumentReply(unsigned status, bool conditional);
