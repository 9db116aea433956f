#include "hosts/common/hostbuttons.h"

#include "config/isessionconfig.h"
#include "config/settingwalk.h"
#include "foundation/textchecks.h"
#include "hosts/common/hostcommands.h"
#include "imports/dialogkit/iframewindow.h"
#include "imports/dialogkit/vtoolbarstate.h"
#include "profile/vprofile.h"
#include "resources/storenames.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog::hosts {

namespace {
/// Characters of a button's text: the store may hold any.
constexpr std::size_t kLongestShown = 100;

/// Leaves two lines: what is behind the second break goes on with a blank.
void JoinLines(VUnicodeString& text) {
    const std::size_t first = text.View().find(u'\n');
    if (first == std::u16string_view::npos) return;
    VUnicodeString rest(text.View().substr(first + 1));
    rest.Replace(u"\n", u" ");
    text = text.Left(first + 1) + rest;
}
}  // namespace

ButtonBarChoice ChooseButtonBar(const VUnicodeString& sessionPath) {
    ButtonBarChoice choice;
    choice.name = VUnicodeString(kDefaultButtonBar);
    const VRef<ISessionConfig> session = sessionPath.IsEmpty() ? nullptr : OpenSession(sessionPath);
    if (!session) return choice;
    const auto* name = dynamic_cast<VProfileText*>(FindSetting(*session, u"User Button Bar Name"));
    const auto* isShown = dynamic_cast<VProfile<VTriState>*>(FindSetting(*session, u"User Button Bar"));
    if (name != nullptr && !name->Get().IsEmpty()) choice.name = name->Get();
    choice.isShown = isShown == nullptr || isShown->Get() != VTriState::kOff;
    return choice;
}

bool HostButtons::Load(const ButtonBarChoice& newChoice, bool again) {
    if (newChoice == choice && !again) return false;
    choice = newChoice;
    bar.Load(choice.name);
    return true;
}

void HostButtons::Show(IFrameWindow& window, const std::function<bool(std::int32_t function)>& isEnabled) const {
    VToolbarState shown;
    int command = HostCommands::kFirstButton;
    for (const UserButton& user : bar.GetButtons()) {
        if (!isWanted || !choice.isShown || command == HostCommands::kFirstButton + HostCommands::kMostButtons) break;
        VToolbarState::Button button;
        button.command = command++;
        button.isEnabled = isEnabled(user.function);
        button.text = VUnicodeString(Shorten(GetShownText(user), kLongestShown));
        JoinLines(button.text);
        button.tip = GetFunctionName(user);
        if (button.tip.IsEmpty()) button.tip = user.label;
        if (!user.argument1.IsEmpty()) button.tip = button.tip + u" " + user.argument1;
        shown.Add(button);
    }
    window.SetToolbar(kBar, shown);
}

const UserButton* HostButtons::Find(int command) const {
    const std::size_t place = static_cast<std::size_t>(command) - std::size_t{HostCommands::kFirstButton};
    return place < bar.GetCount() ? &bar.GetButtons()[place] : nullptr;
}

}  // namespace connectdialog::hosts
