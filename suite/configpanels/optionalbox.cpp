#include "suite/configpanels/optionalbox.h"

#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/textmetrics.h"
#include "imports/dialogkit/vdialog.h"

namespace connectdialog {

namespace {

constexpr int kPicture = 6005;
constexpr int kQuestionPicture = 2;

using enum ControlKind;
constexpr ControlTemplate kControls[] = {
    {kIcon, kPicture, u"information", {7, 7, 21, 20}},
    {kStatic, OptionalBoxIds::kText, u"", {36, 10, 220, 50}},
    {kCheckBox, OptionalBoxIds::kDontShowAgain, u"不再显示(&D)", {36, 64, 220, 10}},
    {kDefaultButton, kIdOk, u"", {152, 82, 50, 14}},
    {kButton, kIdCancel, u"取消", {206, 82, 50, 14}},
    {kButton, OptionalBoxIds::kNo, u"否", {206, 82, 50, 14}},
};
constexpr DialogTemplate kTemplate{OptionalBoxIds::kDialog, 263, 103, u"", kControls};

class OptionalBox : public VDialog {
  public:
    OptionalBox(VWindow* parent, const VUnicodeString& text, const VUnicodeString& checkText,
                const VUnicodeString& buttonText, bool isQuestion, int picture)
        : VDialog(kTemplate, parent),
          text(text),
          checkText(checkText),
          buttonText(buttonText),
          isQuestion(isQuestion),
          picture(picture) {
        this->text.Replace(u"\r", u"");
        this->text.TrimRight();
    }

    bool IsSuppressed() const { return isSuppressed; }

  protected:
    void OnInitDialog() override {
        VDialog::OnInitDialog();
        SetTitle(VGetAppName());
        if (picture == kQuestionPicture) SetControlText(kPicture, u"question"_v);
        SetControlText(OptionalBoxIds::kText, EscapeAmpersand(text));
        if (!checkText.IsEmpty()) SetControlText(OptionalBoxIds::kDontShowAgain, checkText);
        SetControlText(kIdOk, buttonText);
        ShowControl(OptionalBoxIds::kNo, isQuestion);
        ShowControl(kIdCancel, !isQuestion);
    }
    void DoDataExchange(VDataExchange& exchange) override {
        DDX_Check(exchange, OptionalBoxIds::kDontShowAgain, isSuppressed);
    }
    bool OnCommand(int command) override {
        if (command != OptionalBoxIds::kNo) return VDialog::OnCommand(command);
        UpdateData(true);
        EndDialog(kDialogCancelled);
        return true;
    }

  private:
    VUnicodeString text;
    VUnicodeString checkText;
    VUnicodeString buttonText;
    bool isQuestion;
    int picture;
    bool isSuppressed = false;
};

}  // namespace

int ShowOptionalBox(VWindow* parent, const VUnicodeString& text, const VUnicodeString& checkText,
                    VProfile<int>& suppress, const VUnicodeString& buttonText, bool isQuestion, int picture) {
    OptionalBox box(parent, text, checkText, buttonText, isQuestion, picture);
    const bool isAccepted = box.DoModal() == kDialogAccepted;
    if (box.IsSuppressed()) suppress.Set(1);
    return isAccepted ? 1 : 2;
}

}  // namespace connectdialog
