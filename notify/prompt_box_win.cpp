// The multiple-items prompt (see prompt_box_win.h). The box has no Cancel:
// Escape reaches it as IDCANCEL and is ignored, and OK stays disabled until
// one of the four choices is made, so the run never goes on by accident.
#include "notify/prompt_box_win.h"

#include <string>

#include "notify/prompt_box.h"
#include "resources/resource.h"
#include "shell/browser_win.h"
#include "shell/startup_link_win.h"
#include "ui/dialog_win.h"
#include "ui/soft_button_win.h"
#include "ui/spin_edit_win.h"

namespace {

constexpr char kTemplate[] = "DoMultipleItemPromptBox";
constexpr char kHelpTopic[] = "NOTIFICATION";

// The choices by radio button; the first checked one in this order decides.
constexpr struct {
    int id;
    PromptChoice choice;
} kChoices[] = {
    {IDC_PROMPT_DISABLE, PromptChoice::DisableAutomatic},
    {IDC_PROMPT_NONE_TODAY, PromptChoice::NoneToday},
    {IDC_PROMPT_IGNORE_ALL, PromptChoice::IgnoreAll},
    {IDC_PROMPT_SHOW_NOW, PromptChoice::ShowNow},
};

class MultipleItemPrompt : public Dialog {
  public:
    MultipleItemPrompt(int waiting, Settings& settings) : waiting_(waiting), settings_(settings) {
        drawsIconButton();
    }

  protected:
    BOOL onInitDialog() override {
        makeSoftButtons(hwnd(), settings_.SoftButtons, {IDC_BUTTON1, IDC_HELPBUTTON});
        fillExplanation();
        initSpinEdit(hwnd(), IDC_PROMPT_COUNT);
        showSpinEditSetting(hwnd(), IDC_PROMPT_COUNT, settings_.PromptMultipleCount);
        updateOk();
        centreWindow(hwnd());
        return TRUE;
    }

    void onCommand(int id, UINT, HWND) override {
        switch (id) {
            case IDC_PROMPT_SHOW_NOW:
            case IDC_PROMPT_NONE_TODAY:
            case IDC_PROMPT_IGNORE_ALL:
            case IDC_PROMPT_DISABLE:
                if (IsWindowVisible(hwnd())) updateOk();
                return;
            case IDC_PROMPT_COUNT:
            case IDC_PROMPT_COUNT_UPDOWN:
                // Filling the field while the box opens is not the user's doing.
                if (IsWindowVisible(hwnd()))
                    settings_.PromptMultipleCount =
                        static_cast<uint32_t>(getSpinEditSetting(hwnd(), IDC_PROMPT_COUNT));
                return;
            case IDC_BUTTON1:
                // A posted IDOK arrives even while OK is disabled; no choice, no answer.
                if (IsWindowEnabled(item(IDC_BUTTON1))) end(static_cast<INT_PTR>(chosen()));
                return;
            case IDC_HELPBUTTON:
                openManualTopic(hwnd(), settings_, kHelpTopic);
                return;
        }
    }

  private:
    void fillExplanation() {
        HWND text = item(IDC_PROMPT_TEXT);
        const int length = GetWindowTextLengthA(text);
        if (length <= 0) return;
        std::string format(static_cast<std::size_t>(length) + 1, '\0');
        format.resize(static_cast<std::size_t>(GetWindowTextA(text, format.data(), length + 1)));
        SetWindowTextA(text, fillPendingCount(format, waiting_).c_str());
    }

    bool anyChecked() const {
        for (const auto& c : kChoices)
            if (IsDlgButtonChecked(hwnd(), c.id) == BST_CHECKED) return true;
        return false;
    }

    PromptChoice chosen() const {
        for (const auto& c : kChoices)
            if (IsDlgButtonChecked(hwnd(), c.id) == BST_CHECKED) return c.choice;
        return PromptChoice::ShowNow;
    }

    void updateOk() {
        HWND ok = item(IDC_BUTTON1);
        const bool enable = anyChecked();
        if ((IsWindowEnabled(ok) != FALSE) == enable) return;
        EnableWindow(ok, enable);
        if (isSoftButton(ok)) {
            InvalidateRect(ok, nullptr, TRUE);
            UpdateWindow(ok);
        }
    }

    int waiting_;
    Settings& settings_;
};

}  // namespace

int showMultipleItemPrompt(HWND owner, std::vector<UpdateItem>& items, int waiting,
                           Settings& settings, SeenList& seen) {
    MultipleItemPrompt prompt(waiting, settings);
    const INT_PTR result = prompt.runModal(owner, kTemplate);
    // A box that could not be made asks nothing: the run goes on as if it
    // had not been offered.
    const PromptChoice choice =
        result >= 0 && result <= 3 ? static_cast<PromptChoice>(result) : PromptChoice::ShowNow;
    const int goOn = actOnPromptChoice(choice, items, settings, seen, [owner](uint32_t option) {
        applyStartupOption(owner, option);
    });
    if (owner) UpdateWindow(owner);
    return goOn;
}
