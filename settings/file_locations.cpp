// Path joining for the data file locations, kept apart from the shell calls so
// that the 260-character cut and the separator rule are the same on every
// platform and tested natively.
#include "settings/file_locations.h"

#include <algorithm>

namespace {

void appendBounded(std::string& path, std::string_view text) {
    path.append(text.substr(0, kMaxPathChars - std::min(path.size(), kMaxPathChars)));
}

void appendSeparator(std::string& path) {
    if (!path.empty() && path.back() != '\\') appendBounded(path, "\\");
}

}  // namespace

std::string joinDataPath(std::string_view folder, std::initializer_list<std::string_view> parts) {
    std::string path;
    appendBounded(path, folder);
    for (std::string_view part : parts) {
        appendSeparator(path);
        appendBounded(path, part);
    }
    return path;
}

std::string getApplicationFilePath(std::string_view applicationPath, std::string_view name) {
    // Unbounded on purpose: the program's own folder plus a file name, which
    // the system rejects by itself when it is too long.
    std::string path(applicationPath);
    if (!path.empty() && path.back() != '\\') path += '\\';
    path += name;
    return path;
}
