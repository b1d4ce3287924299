// The version notice's report (see version_box_text.h). Each piece has a
// margin: it is added only when the report's length plus the margin stays below
// the buffer, the margin being the piece's own length unless a larger one
// leaves room for what must follow it.
#include "notify/version_box_text.h"

#include <cstdio>
#include <string_view>

#include "notify/alert_text.h"

namespace {

constexpr std::size_t kReportBuffer = 1024;
constexpr char kNotInstalled[] =
    " This application is not installed on your system.\n No version information is available "
    "for it.\n";

class Report {
  public:
    void add(std::string_view piece, std::size_t margin) {
        if (text_.size() + margin < kReportBuffer) text_ += piece;
    }
    void add(std::string_view piece) { add(piece, piece.size()); }
    std::string take() { return std::move(text_); }

  private:
    std::string text_;
};

std::string formatNumber(const char* format, int32_t value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

}  // namespace

std::string versionReport(const UpdateItem& item, InstalledLookup& lookup) {
    Report report;
    if (item.application && !item.application->empty()) {
        report.add("\n ");
        report.add(*item.application);
        report.add("\n\n", 8);

        const std::optional<InstalledVersion> installed = lookup.lookupInstalledVersion(item);
        if (installed && !installed->text.empty() && installed->versionNumber != 0) {
            report.add(" INSTALLED VERSION: ", 21);
            report.add(installed->text);
            report.add("\n", 4);
        } else {
            report.add(kNotInstalled, 100);
        }

        report.add(" CURRENT VERSION: ", 19);
        report.add(announcedVersionText(item));
        if (item.patch > 0) report.add(formatNumber(" (Revision %d)", item.patch));
        if (item.beta > 0) report.add(formatNumber(" (Beta %d)", item.beta));
        report.add("\n", 4);
    }
    if (item.date && !item.date->empty()) {
        report.add(" RELEASED: ", 13);
        report.add(*item.date);
    }
    return report.take();
}
