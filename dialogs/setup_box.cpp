// The Setup dialog's portable decisions (see setup_box.h).
#include "dialogs/setup_box.h"

#include "base/ascii.h"

namespace {

std::string bounded(std::string_view text) {
    return std::string(text.substr(0, kSetupTextMax));
}

}  // namespace

void commitSetup(Settings& record, const SetupValues& v) {
    record.SoftButtons = v.softButtons;
    record.SetupAlertPopup = v.alertPopup;
    record.SetupAlertReport = 0;
    record.SetupTipPopup = v.tipPopup;
    record.SetupTipReport = 0;
    record.SetupVersionPopup = v.versionPopup;
    record.SetupVersionReport = 0;
    record.SetupOfftopicPopup = v.offtopicPopup;
    record.SetupOfftopicReport = 0;
    record.SetupNoticePopup = v.noticePopup;
    record.AllowINIUpdates = 0;
    record.OnlyShowNewItems = v.onlyShowNewItems ? 1 : 0;
    record.DoNoticationsAutomatically = v.doNotificationsAutomatically ? 1 : 0;
    record.BeNoisy = v.beNoisy ? 1 : 0;
    record.DownloadGraphics = v.downloadGraphics ? 1 : 0;
    record.CurrentTransactionDate = bounded(v.transactionDate);
    record.AlertFontSize = v.fontSize;
    record.AlertFontBold = v.fontBold ? 1 : 0;
    record.AlertFontItal = v.fontItalic ? 1 : 0;
    record.AlertFontAntialias = v.fontAntialias ? 1 : 0;
    record.AlertFontName = bounded(v.fontName);
}

int initialFontIndex(const std::vector<std::string>& names, std::string_view storedName) {
    // Every name begins with "": a user without an alert font keeps none
    // rather than getting whichever face sorts first.
    if (storedName.empty()) return -1;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string_view name = names[i];
        if (name.size() >= storedName.size() &&
            equalsIgnoringAsciiCase(name.substr(0, storedName.size()), storedName))
            return static_cast<int>(i);
    }
    return -1;
}

bool isDarkColour(uint32_t colour) {
    const uint32_t red = colour & 0xFF;
    const uint32_t green = (colour >> 8) & 0xFF;
    const uint32_t blue = (colour >> 16) & 0xFF;
    const uint32_t brightness = (red * 30 / 100 + green * 59 / 100 + blue * 11 / 100) % 256;
    return brightness < 129;
}
