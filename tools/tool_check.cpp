// heralder-tool check [--json] [--images DIR] FILE: what a publisher should know
// about an update document before it goes live, in the compilers' form
// ("FILE:LINE: error: text") so that editors can jump to each line. The file
// is read exactly as the agent reads a local document. With --images, the
// pictures the items name are looked up in DIR, the folder the server offers
// as /update/images/.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include <nlohmann/json.hpp>

#include "check/document_check.h"
#include "tools/tool_commands.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace {

constexpr const char* kUsage =
    "usage: heralder-tool check [--json] [--images DIR] [--key PUBLIC.pem] FILE\n";

std::string findingsJson(const std::string& path, const std::vector<Finding>& findings) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    int errors = 0;
    for (const Finding& f : findings) {
        const bool error = f.severity == FindingSeverity::Error;
        errors += error;
        list.push_back({{"line", f.line},
                        {"severity", error ? "error" : "warning"},
                        {"text", latin1ToUtf8(f.text)}});
    }
    nlohmann::ordered_json j = {{"file", latin1ToUtf8(path)},
                                {"errors", errors},
                                {"warnings", static_cast<int>(findings.size()) - errors},
                                {"findings", list}};
    return j.dump(2) + "\n";
}

ImageReader folderReader(const std::string& folder) {
    return [folder](const std::string& name) -> std::optional<std::string> {
        std::ifstream file(folder + "/" + name, std::ios::binary);
        if (!file) return std::nullopt;
        char head[16] = {};
        file.read(head, sizeof head);
        return std::string(head, static_cast<std::size_t>(file.gcount()));
    };
}

}  // namespace

int runCheckCommand(int argc, char** argv) {
    bool json = false;
    std::optional<std::string> images;
    std::optional<std::string> path;
    std::vector<std::string> keys;
    for (int i = 0; i < argc; ++i) {
        if (std::strcmp(argv[i], "--json") == 0) {
            json = true;
        } else if (std::strcmp(argv[i], "--images") == 0 && i + 1 < argc) {
            images = argv[++i];
        } else if (std::strcmp(argv[i], "--key") == 0 && i + 1 < argc) {
            keys.push_back(argv[++i]);
        } else if (argv[i][0] == '-' || path) {
            std::fputs(kUsage, stderr);
            return 2;
        } else {
            path = argv[i];
        }
    }
    if (!path) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const std::optional<std::string> document = readToolDocument(*path);
    if (!document) return 1;
    std::vector<Finding> findings =
        checkUpdateDocument(*document, images ? folderReader(*images) : ImageReader());
    if (!keys.empty())
        if (auto finding = signatureFinding(*document, keys)) findings.push_back(*finding);
    const std::string out = json ? findingsJson(*path, findings) : formatFindings(*path, findings);
#ifdef _WIN32
    _setmode(_fileno(stdout), _O_BINARY);  // LF line ends, as on every platform
#endif
    std::fwrite(out.data(), 1, out.size(), stdout);
    if (std::fflush(stdout) != 0) return 1;
    return hasErrors(findings) ? 1 : 0;
}
