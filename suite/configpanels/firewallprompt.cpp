#include "suite/configpanels/firewallprompt.h"

#include "foundation/vpolicies.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/vdialog.h"
#include "resources/dialogids.h"

namespace connectdialog {

namespace {

class FirewallPrompt : public VDialog {
  public:
    FirewallPrompt(FirewallQuestion question, VWindow* parent)
        : VDialog(question == FirewallQuestion::kPassword ? FirewallPromptIds::kPasswordDialog
                                                          : FirewallPromptIds::kUsernameDialog,
                  parent),
          question(question) {}

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

}  // namespace connectdialog
