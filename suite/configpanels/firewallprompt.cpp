#include "suite/configpanels/firewallprompt.h"

#include <array>

#include "foundation/vpolicies.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/vdialog.h"

namespace connectdialog {

namespace {

constexpr std::array<ControlTemplate, 5> MakeControls(const char16_t* request, ControlKind kind, const char16_t* save) {
    using enum ControlKind;
    return {{{kStatic, kNoId, request, {7, 7, 186, 9}},
             {kind, FirewallPromptIds::kAnswer, u"", {7, 19, 186, 14}},
             {kCheckBox, FirewallPromptIds::kSave, save, {7, 38, 186, 10}},
             {kDefaultButton, kIdOk, u"确定", {89, 56, 50, 14}},
             {kButton, kIdCancel, u"取消", {143, 56, 50, 14}}}};
}
constexpr auto kUsernameControls = MakeControls(u"请输入防火墙的用户名(&U):", ControlKind::kEdit, u"保存用户名(&S)");
constexpr auto kPasswordControls = MakeControls(u"请输入防火墙的密码(&P):", ControlKind::kPassword, u"保存密码(&S)");
/// By FirewallQuestion.
constexpr DialogTemplate kTemplates[] = {
    {FirewallPromptIds::kUsernameDialog, 200, 77, u"防火墙", kUsernameControls},
    {FirewallPromptIds::kPasswordDialog, 200, 77, u"防火墙", kPasswordControls},
};

class FirewallPrompt : public VDialog {
  public:
    FirewallPrompt(FirewallQuestion question, VWindow* parent)
        : VDialog(kTemplates[static_cast<std::size_t>(question)], parent), question(question) {}

    const VUnicodeString& GetAnswer() const { return answer; }
    bool MustSave() const { return save; }

  protected:
    void OnInitDialog() override {
        VDialog::OnInitDialog();
        const VUnicodeString product = VGetAppName();
        const bool canSave = question == FirewallQuestion::kPassword ? VCanSavePasswords(product.GetData(), nullptr)
                                                                     : VCanSaveUsernames(product.GetData(), nullptr);
        EnableControl(FirewallPromptIds::kSave, canSave);
        OnControlChanged(FirewallPromptIds::kAnswer);
    }
    void DoDataExchange(VDataExchange& exchange) override {
        DDX_Text(exchange, FirewallPromptIds::kAnswer, answer);
        DDX_Check(exchange, FirewallPromptIds::kSave, save);
    }
    void OnControlChanged(int id) override {
        EnableControl(kIdOk, question == FirewallQuestion::kPassword || !GetControlText(id).IsEmpty());
    }

  private:
    FirewallQuestion question;
    VUnicodeString answer;
    bool save = false;
};

}  // namespace

bool AskForFirewall(FirewallQuestion question, IString& answer, bool& save, VWindow* parent) {
    FirewallPrompt prompt(question, parent);
    const bool isConfirmed = prompt.DoModal() == kDialogAccepted;
    const VUnicodeString text = isConfirmed ? prompt.GetAnswer() : VUnicodeString();
    answer.Assign(text.GetData(), text.GetLength(), text.GetState());
    save = isConfirmed && prompt.MustSave();
    return isConfirmed;
}

std::span<const DialogTemplate> GetFirewallPromptTemplates() {
    return kTemplates;
}

}  // namespace connectdialog
