// Reading documents and writing downloaded bodies (see document_file.h).
#include "feed/document_file.h"

#include <cstdio>

#include "base/crt_text.h"

std::optional<std::string> readLocalDocument(const std::string& path) {
    return readFileBytes(path);
}

bool writeHandleToFile(const std::string& path, std::string_view body) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return false;
    static const char zeros[16] = {};
    bool ok = std::fwrite(body.data(), 1, body.size(), f) == body.size() &&
              std::fwrite(zeros, 1, sizeof zeros, f) == sizeof zeros;
    ok = (std::fclose(f) == 0) && ok;
    if (!ok) std::remove(path.c_str());
    return ok;
}
