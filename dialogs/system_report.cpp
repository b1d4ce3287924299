// The system information report's text (see system_report.h). Labels are
// padded to one column: the report is shown and pasted in a fixed-pitch font.
#include "dialogs/system_report.h"

#include <cstdio>

namespace {

constexpr std::size_t kLabelWidth = 20;
constexpr char kEol[] = "\r\n";

void line(std::string& out, const std::string& label, const std::string& value) {
    std::string text = label.empty() ? std::string() : "  " + label + ":";
    if (text.size() < kLabelWidth)
        text.resize(kLabelWidth, ' ');
    else
        text += ' ';
    out += text + value + kEol;
}

void heading(std::string& out, const char* title) {
    out += kEol;
    out += title;
    out += kEol;
}

std::string orUnknown(const std::string& text) {
    return text.empty() ? "(unknown)" : text;
}

// The path on the label's line, what is known of the file on the next: paths
// are long, and the details should not scroll out of sight behind them.
void fileLines(std::string& out, const std::string& label, const FileFacts& file,
               const std::string& more = {}) {
    if (file.path.empty()) {
        line(out, label, "(unknown)");
        return;
    }
    line(out, label, file.path);
    std::string details = "not present";
    if (file.exists) {
        details = std::to_string(file.size) + " bytes";
        if (file.modified) details += ", modified " + formatReportTime(*file.modified);
        details += more;
    }
    line(out, "", details);
}

std::string proxyText(const ProxyFacts& proxy) {
    if (!proxy.known) return "(unknown)";
    if (proxy.direct || proxy.proxy.empty()) return "none (direct connection)";
    std::string text = proxy.proxy;
    if (!proxy.bypass.empty()) text += " (not for " + proxy.bypass + ")";
    return text;
}

}  // namespace

std::string formatReportTime(const ReportTime& t) {
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", t.year, t.month, t.day,
                  t.hour, t.minute, t.second);
    return text;
}

std::string formatSystemReport(const SystemFacts& f) {
    std::string out = "Quenmark Heralder system information";
    out += kEol;

    heading(out, "Program");
    line(out, "Version", orUnknown(f.programVersion));
    line(out, "Build date", orUnknown(f.buildDate));
    line(out, "Program file", orUnknown(f.programFile));

    heading(out, "System");
    line(out, "Platform",
         orUnknown(f.platformName) + " (code " + std::to_string(f.platformCode) + ")");
    line(out, "Screen",
         std::to_string(f.screenWidth) + " x " + std::to_string(f.screenHeight) + " pixels, " +
             std::to_string(f.dpi) + " dpi");

    heading(out, "Folders");
    line(out, "Program", orUnknown(f.programFolder));
    line(out, "Data", orUnknown(f.dataFolder));
    line(out, "Product", orUnknown(f.productFolder));

    heading(out, "Files");
    fileLines(out, "Settings", f.settingsFile);
    fileLines(out, "Backup", f.settingsBackup);
    fileLines(out, "Older backup", f.settingsOlderBackup);
    fileLines(out, "Seen list", f.seenList,
              f.seenEntries ? ", " + std::to_string(*f.seenEntries) + " items" : ", unreadable");

    heading(out, "Network");
    line(out, "Server", orUnknown(f.serverHost));
    if (!f.documentSignature.empty()) line(out, "Signed documents", f.documentSignature);
    line(out, "Proxy", proxyText(f.proxy));

    heading(out, "Installed Quenmark products");
    if (f.products.empty()) out += std::string("  (none found)") + kEol;
    for (const ProductFacts& p : f.products) line(out, p.file + " [" + p.section + "]", p.version);
    return out;
}
