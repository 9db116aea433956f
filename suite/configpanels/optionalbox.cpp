#include "suite/configpanels/optionalbox.h"

#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/vdialog.h"

namespace connectdialog {

namespace {

constexpr int kNoButton = 6004;

using enum ControlKind;
constexpr ControlTemplate kControls[] = {
    {kStatic, OptionalBoxIds::kText, u"", {7, 7, 236, 44}},
    {kCheckBox, OptionalBoxIds::kDontShowAgain, u"不再显示(&D)", {7, 56, 236, 10}},
    {kDefaultButton, kIdOk, u"", {139, 74, 50, 14}},
    {kButton, kIdCancel, u"取消", {193, 74, 50, 14}},
    {kButton, kNoButton, u"否", {193, 74, 50, 14}},
};
constexpr DialogTemplate kTemplate{OptionalBoxIds::kDialog, 250, 95, u"", kControls};

class OptionalBox : public VDialog {
  public:
    OptionalBox(VWindow* parent, const VUnicodeString& text, const VUnicodeString& checkText,
                const VUnicodeString& buttonText, bool isQuestion)
        : VDialog(kTemplate, parent),
          text(text),
          checkText(checkText),
          buttonText(buttonText),
          isQuestion(isQuestion) {}

    bool IsSuppressed() const { return isSuppressed; }

  protected:
    void OnInitDialog() override {
        VDialog::OnInitDialog();
        SetTitle(VGetAppName());
        SetControlText(OptionalBoxIds::kText, text);
        if (!checkText.IsEmpty()) SetControlText(OptionalBoxIds::kDontShowAgain, checkText);
        SetControlText(kIdOk, buttonText);
        ShowControl(kNoButton, isQuestion);
        ShowControl(kIdCancel, !isQuestion);
    }
    void DoDataExchange(VDataExchange& exchange) override {
        DDX_Check(exchange, OptionalBoxIds::kDontShowAgain, isSuppressed);
    }
    bool OnCommand(int command) override {
        if (command != kNoButton) return VDialog::OnCommand(command);
        UpdateData(true);
        EndDialog(kDialogCancelled);
        return true;
    }

  private:
    VUnicodeString text;
    VUnicodeString checkText;
    VUnicodeString buttonText;
    bool isQuestion;
    bool isSuppressed = false;
};

}  // namespace

int ShowOptionalBox(VWindow* parent, const VUnicodeString& text, const VUnicodeString& checkText,
                    VProfile<int>& suppress, const VUnicodeString& buttonText, bool isQuestion) {
    OptionalBox box(parent, text, checkText, buttonText, isQuestion);
    const bool isAccepted = box.DoModal() == kDialogAccepted;
    if (box.IsSuppressed()) suppress.Set(1);
    return isAccepted ? 1 : 2;
}

}  // namespace connectdialog
