// One daily fetch of the update document, for bench/wine_bytes.sh: "agent"
// fetches as heralder.exe does (conditional on the copy kept at KEPT,
// compressed) and keeps what it got; "plain" makes the older client's request
// (one unconditional GET, no compression). Prints the reply's status and the
// text's size; the bytes on the wire come from the server's access log.
#include <cstdio>
#include <cstring>
#include <string>

#include "feed/http_win.h"
#include "feed/kept_document_win.h"

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fprintf(stderr, "usage: fetch_bytes agent|plain HOST PATH KEPT\n");
        return 2;
    }
    const std::string host = argv[2], path = argv[3], kept = argv[4];
    if (std::strcmp(argv[1], "plain") == 0) {
        auto text = fetchServerFile(nullptr, host, path);
        if (!text) return 1;
        std::printf("200 %zu\n", text->size());
        return 0;
    }
    auto fetched = fetchDocument(nullptr, host, path, kept);
    if (!fetched) return 1;
    keepFetchedDocument(kept, *fetched);
    std::printf("%s %zu\n", fetched->fromKeptCopy ? "304" : "200", fetched->document.text.size());
    return 0;
}
