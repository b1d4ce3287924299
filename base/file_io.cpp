// Checked whole-file writes and one-step replacement (see file_io.h). The one
// place where the disk is asked to confirm a write; the calls differ between
// the C runtimes, the behaviour does not.
#include "base/file_io.h"

#include <sys/stat.h>

#include <cstdio>
#include <ctime>
#include <memory>

#ifdef _WIN32
#include <io.h>

#include "base/win_headers.h"
#else
#include <unistd.h>
#endif

namespace {

FileReplaceHook replaceHook = nullptr;

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using UniqueFile = std::unique_ptr<std::FILE, FileCloser>;

// Buffered bytes to the system, then the system's buffers to the disk.
bool flushToDisk(std::FILE* f) {
    if (std::fflush(f) != 0) return false;
#ifdef _WIN32
    return FlushFileBuffers(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(f)))) != 0;
#else
    return fsync(fileno(f)) == 0;
#endif
}

bool cutBack(std::FILE* f, long length) {
#ifdef _WIN32
    return _chsize(_fileno(f), length) == 0;
#else
    return ftruncate(fileno(f), length) == 0;
#endif
}

}  // namespace

bool fileExists(const std::string& path) {
#ifdef _WIN32
    struct _stat64 st;
    return _stat64(path.c_str(), &st) == 0;
#else
    struct stat st;
    return stat(path.c_str(), &st) == 0;
#endif
}

std::optional<std::string> readFileBytes(const std::string& path) {
    UniqueFile f(std::fopen(path.c_str(), "rb"));
    if (!f) return std::nullopt;
    std::string data;
    char buffer[65536];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, f.get())) > 0) data.append(buffer, n);
    if (std::ferror(f.get())) return std::nullopt;
    return data;
}

bool writeFileBytes(const std::string& path, std::initializer_list<std::string_view> pieces,
                    WriteReach reach) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return false;
    bool ok = true;
    for (std::string_view piece : pieces)
        ok = ok && std::fwrite(piece.data(), 1, piece.size(), f) == piece.size();
    ok = ok && (reach == WriteReach::Disk ? flushToDisk(f) : std::fflush(f) == 0);
    return std::fclose(f) == 0 && ok;
}

bool replaceFileWith(const std::string& from, const std::string& to, WriteReach reach) {
#ifdef _WIN32
    const DWORD through = reach == WriteReach::Disk ? MOVEFILE_WRITE_THROUGH : 0;
    return MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | through) != 0;
#else
    (void)reach;
    return std::rename(from.c_str(), to.c_str()) == 0;
#endif
}

bool linkFile(const std::string& existing, const std::string& name) {
#ifdef _WIN32
    return CreateHardLinkA(name.c_str(), existing.c_str(), nullptr) != 0;
#else
    return link(existing.c_str(), name.c_str()) == 0;
#endif
}

std::optional<long long> fileAgeSeconds(const std::string& path) {
#ifdef _WIN32
    struct _stat64 st;
    if (_stat64(path.c_str(), &st) != 0) return std::nullopt;
#else
    struct stat st;
    if (stat(path.c_str(), &st) != 0) return std::nullopt;
#endif
    return static_cast<long long>(std::time(nullptr) - st.st_mtime);
}

bool replaceFileContents(const std::string& path, std::initializer_list<std::string_view> pieces,
                         WriteReach reach) {
    if (path.empty()) return false;
    const std::string fresh = path + ".tmp";
    if (writeFileBytes(fresh, pieces, reach)) {
        if (replaceHook) replaceHook(path);
        if (replaceFileWith(fresh, path, reach)) return true;
    }
    std::remove(fresh.c_str());
    return false;
}

bool appendFileBytes(const std::string& path, std::string_view bytes) {
    std::FILE* f = std::fopen(path.c_str(), "ab");
    if (!f) return false;
    // Unbuffered, so that nothing of a failed write is tried again at close.
    std::setvbuf(f, nullptr, _IONBF, 0);
    std::fseek(f, 0, SEEK_END);
    const long before = std::ftell(f);
    bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size() && flushToDisk(f);
    if (!ok && before >= 0) {
        std::clearerr(f);
        cutBack(f, before);
    }
    return std::fclose(f) == 0 && ok;
}

void setFileReplaceHook(FileReplaceHook hook) {
    replaceHook = hook;
}
