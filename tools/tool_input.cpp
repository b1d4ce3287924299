// The tool's inputs are files a publisher names, and only regular files: a
// FIFO, a terminal or a serial port would block the read for ever, and a
// folder cannot be a document. The kind is asked of an opened handle, opened
// so that the opening itself never waits (O_NONBLOCK: a FIFO without a writer
// would otherwise hold the open), and before the agent's reader opens it.
#include <cerrno>
#include <cstdio>
#include <string>

#include "feed/document_file.h"
#include "tools/tool_commands.h"

#ifdef _WIN32
#include "base/win_handles.h"
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

enum class InputKind { Regular, Missing, Other, Unopenable };

InputKind inputKind(const std::string& path) {
#ifdef _WIN32
    // No access asked for: a device is not opened for reading, and a folder
    // opens only with backup semantics, which lets us name it.
    const UniqueFile file(CreateFileA(path.c_str(), 0,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file) {
        const DWORD error = GetLastError();
        return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND
                   ? InputKind::Missing
                   : InputKind::Unopenable;
    }
    BY_HANDLE_FILE_INFORMATION info = {};
    const bool regular = GetFileType(file.get()) == FILE_TYPE_DISK &&
                         GetFileInformationByHandle(file.get(), &info) &&
                         !(info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
    return regular ? InputKind::Regular : InputKind::Other;
#else
    const int fd = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) return errno == ENOENT ? InputKind::Missing : InputKind::Unopenable;
    struct stat st = {};
    const bool regular = fstat(fd, &st) == 0 && S_ISREG(st.st_mode);
    close(fd);
    return regular ? InputKind::Regular : InputKind::Other;
#endif
}

bool refuseOther(const std::string& path, InputKind kind) {
    if (kind != InputKind::Other) return false;
    std::fprintf(stderr, "%s is not a regular file (a folder, a pipe or a device)\n", path.c_str());
    return true;
}

}  // namespace

std::optional<std::string> readToolDocument(const std::string& path) {
    const InputKind kind = inputKind(path);
    if (refuseOther(path, kind)) return std::nullopt;
    std::optional<std::string> document;
    if (kind == InputKind::Regular) document = readLocalDocument(path);
    if (!document) std::fprintf(stderr, "There has been an error loading %s\n", path.c_str());
    return document;
}

bool mayReadToolSettings(const std::string& path) {
    const InputKind kind = inputKind(path);
    if (refuseOther(path, kind)) return false;
    // Not handed to the reader: "CON" cannot be opened without access, yet
    // the reader would open it for reading and wait for the console.
    if (kind != InputKind::Unopenable) return true;
    std::fprintf(stderr, "There has been an error loading %s\n", path.c_str());
    return false;
}
