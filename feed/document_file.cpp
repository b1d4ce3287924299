// Reading documents and writing downloaded bodies (see document_file.h).
#include "feed/document_file.h"

#include <cstdio>

#include "base/file_io.h"

std::optional<std::string> readLocalDocument(const std::string& path) {
    return readFileBytes(path);
}

bool writeHandleToFile(const std::string& path, std::string_view body) {
    static const char zeros[16] = {};
    bool ok = writeFileBytes(path, {body, std::string_view(zeros, sizeof zeros)});
    if (!ok) std::remove(path.c_str());
    return ok;
}
