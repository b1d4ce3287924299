// The six message box operations the program uses. Each is a row of one table
// (style and button texts); the "once" variants add the "show again" check box
// and its note and keep no state of their own: the caller's flag says whether
// the box is still wanted and receives the check box's final state.
#include "resources/resource.h"
#include "ui/message_box_win.h"
#include "ui/res_string_win.h"

namespace {

struct Operation {
    uint32_t style;
    UINT button1;
    UINT no;
    UINT cancel;
};

constexpr uint32_t kTitled = kMbStandard | kMbTitle | kMbButton1Text;
constexpr uint32_t kOnce = kMbCheckBox1 | kMbNote1;

constexpr Operation kShowMessage{kTitled, IDS_DISMISS, 0, 0};
constexpr Operation kAskYesNoCancel{kTitled | kMbNoButton | kMbCancelButton, IDS_YES, IDS_NO,
                                    IDS_CANCEL};
constexpr Operation kAskYesNo{kTitled | kMbNoButton, IDS_YES, IDS_NO, 0};
constexpr Operation kShowMessageOnce{kTitled | kOnce, IDS_OK, 0, 0};
constexpr Operation kAskYesNoOnce{kTitled | kOnce | kMbNoButton, IDS_YES, IDS_NO, 0};

MessageBoxSpec makeRequest(const Operation& op, std::string_view text, std::string_view title) {
    MessageBoxSpec request;
    request.style = op.style;
    request.text = text;
    request.title = title;
    request.iconId = IDI_HERALDER;
    request.button1Text = loadResString(op.button1);
    if (op.no) request.noText = loadResString(op.no);
    if (op.cancel) request.cancelText = loadResString(op.cancel);
    if (op.style & kMbCheckBox1) {
        request.checkTexts[0] = loadResString(IDS_SHOW_AGAIN);
        request.notes[0] = loadResString(IDS_SHOW_AGAIN_NOTE);
    }
    return request;
}

int run(HWND owner, const Operation& op, std::string_view text) {
    MessageBoxSpec request = makeRequest(op, text, loadResString(IDS_MESSAGE_TITLE));
    showMessageBox(owner, request);
    return request.result;
}

// A box that was never shown or never closed through a button leaves the flag
// alone.
int runOnce(HWND owner, const Operation& op, std::string_view text, std::string_view title,
            uint32_t& flag) {
    MessageBoxSpec request = makeRequest(op, text, title);
    request.checkStates[0] = 1;
    showMessageBox(owner, request);
    if (request.result != 0) flag = request.checkStates[0];
    return request.result;
}

}  // namespace

void showMessage(HWND owner, std::string_view text) {
    run(owner, kShowMessage, text);
}

int askYesNoCancel(HWND owner, std::string_view text) {
    return run(owner, kAskYesNoCancel, text);
}

int askYesNo(HWND owner, std::string_view text) {
    return run(owner, kAskYesNo, text);
}

void showMessageOnce(HWND owner, std::string_view text, uint32_t& flag) {
    if (flag) runOnce(owner, kShowMessageOnce, text, loadResString(IDS_MESSAGE_TITLE), flag);
}

bool askYesNoOnce(HWND owner, std::string_view text, uint32_t& flag) {
    return askYesNoOnceTitled(owner, text, loadResString(IDS_MESSAGE_TITLE), flag);
}

bool askYesNoOnceTitled(HWND owner, std::string_view text, std::string_view title, uint32_t& flag) {
    if (!flag) return true;
    return runOnce(owner, kAskYesNoOnce, text, title, flag) == kResultFirst;
}
