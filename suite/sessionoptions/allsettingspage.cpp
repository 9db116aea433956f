#include "suite/sessionoptions/allsettingspage.h"

#include <string>

#include "config/protocolchoice.h"
#include "config/settingtext.h"
#include "config/settingwalk.h"
#include "foundation/textchecks.h"
#include "imports/dialogkit/textmetrics.h"
#include "imports/dialogkit/vdialog.h"
#include "imports/dialogkit/vmessagebox.h"
#include "resources/storenames.h"
#include "suite/sessionoptions/optiontemplate.h"

namespace connectdialog {

namespace {

constexpr int kControls[] = {OptionIds::kFilterLabel, OptionIds::kFilter, OptionIds::kSettings,
                             OptionIds::kSettingLabel};
constexpr int kEditors[] = {OptionIds::kSettingText, OptionIds::kSettingSecret, OptionIds::kSettingLines,
                            OptionIds::kSettingChoice};
constexpr std::size_t kLongestRow = 200;

/// On one line: what would break it or change how it looks becomes a mark.
VUnicodeString OneLine(const VUnicodeString& text) {
    std::u16string line(text.View().substr(0, kLongestRow));
    for (char16_t& character : line)
        if (IsControl(character)) character = character == u'\n' ? u'⏎' : u'·';
    if (text.GetLength() > kLongestRow) line += u'…';
    return VUnicodeString(line);
}

/// Without regard to case.
bool Contains(VUnicodeString text, VUnicodeString part) {
    text.MakeLower();
    part.MakeLower();
    return text.View().find(part.View()) != std::u16string_view::npos;
}

}  // namespace

AllSettingsPage::AllSettingsPage(VDialog& dialog, ISessionConfig& session)
    : dialog(dialog),
      session(session),
      list([this](const void* data) { return Choose(static_cast<const VProfileData*>(data)); }) {}

void AllSettingsPage::Attach() {
    list.Attach(*dialog.GetWindow(), OptionIds::kSettings);
}

void AllSettingsPage::Show(bool isShown) {
    for (const int id : kControls) dialog.ShowControl(id, isShown);
    if (!isShown) current = nullptr;
    if (isShown) Fill();
    ShowEditor(current);
}

VUnicodeString AllSettingsPage::RowText(VProfileData& setting) const {
    VUnicodeString value = u"(不显示)";
    if (!IsSecretSetting(setting)) value = OneLine(ShowField(GetFieldOf(setting), setting));
    return (setting.IsChanged() ? u"* " : u"") + setting.GetName() + u" = " + value;
}

bool AllSettingsPage::Fits(VProfileData& setting) const {
    const VUnicodeString filter = dialog.GetControlText(OptionIds::kFilter);
    const OptionField* known = FindOptionField(setting.GetName());
    return filter.IsEmpty() || Contains(RowText(setting), filter) ||
           (known != nullptr && Contains(known->label, filter));
}

void AllSettingsPage::Fill() {
    VProfileData* const former = current;
    list.Clear();
    VisitSettings(session, [&](VProfileData& setting) {
        // That it is a session is no choice.
        if (setting.GetName() != kIsSessionValue && Fits(setting))
            list.Add(TreeItem::kNone, RowText(setting), &setting);
    });
    TreeItem chosen = list.Find(former);
    if (chosen == TreeItem::kNone) chosen = list.Items().GetFirstChild(TreeItem::kNone);
    list.Select(chosen);
    auto* const setting = static_cast<VProfileData*>(list.Items().GetData(chosen));
    if (setting != former || former == nullptr) ShowEditor(setting);
}

int AllSettingsPage::GetEditor() const {
    switch (GetControlKind(field.kind)) {
        case ControlKind::kPassword:
            return OptionIds::kSettingSecret;
        case ControlKind::kMemo:
            return OptionIds::kSettingLines;
        case ControlKind::kComboBox:
        case ControlKind::kCheckBox:
            return OptionIds::kSettingChoice;
        default:
            return OptionIds::kSettingText;
    }
}

void AllSettingsPage::ShowEditor(VProfileData* setting) {
    current = setting;
    for (const int id : kEditors) dialog.ShowControl(id, false);
    dialog.ShowControl(OptionIds::kForget, false);
    if (setting == nullptr) return dialog.SetControlText(OptionIds::kSettingLabel, VUnicodeString());
    field = GetFieldOf(*setting);
    const int editor = GetEditor();
    VUnicodeString label = setting->GetName();
    if (const OptionField* known = FindOptionField(setting->GetName())) label = label + u"（" + known->label + u"）";
    const VUnicodeString description = DescribeField(field, *setting);
    if (!description.IsEmpty()) label = label + u"：" + description;
    dialog.SetControlText(OptionIds::kSettingLabel, EscapeAmpersand(label));
    if (editor == OptionIds::kSettingChoice) dialog.SetControlChoices(editor, ListChoices(field, session, *setting));
    dialog.SetControlText(editor, ShowField(field, *setting));
    dialog.ShowControl(editor, true);
    dialog.ShowControl(OptionIds::kForget, field.kind == FieldKind::kSecret);
}

bool AllSettingsPage::Choose(const VProfileData* setting) {
    VUnicodeString refusal;
    if (!Take(refusal)) {
        VMessageBox(&dialog, refusal, kBoxWarning);
        return false;
    }
    ShowEditor(const_cast<VProfileData*>(setting));  // the session's, which is ours to change
    return true;
}

void AllSettingsPage::RefreshRow() {
    list.Items().SetText(list.Find(current), RowText(*current));
}

bool AllSettingsPage::Take(VUnicodeString& refusal) {
    if (current == nullptr) return true;
    const int editor = GetEditor();
    if (!TakeField(field, session, *current, dialog.GetControlText(editor), refusal)) {
        dialog.FocusControl(editor);
        return false;
    }
    RefreshRow();
    return true;
}

void AllSettingsPage::OnControlChanged(int id) {
    VUnicodeString refusal;
    if (id == OptionIds::kFilter) {
        if (Take(refusal)) return Fill();
        VMessageBox(&dialog, refusal, kBoxWarning);
        return dialog.FocusControl(GetEditor());
    }
    if (current == nullptr || field.kind == FieldKind::kSecret) return;
    if (!TakeField(field, session, *current, dialog.GetControlText(id), refusal)) return;
    if (FindProtocolChoice(*current)) return Fill();  // each protocol has settings of its own
    RefreshRow();
}

void AllSettingsPage::Forget() {
    if (current == nullptr || field.kind != FieldKind::kSecret) return;
    WriteSettingText(*current, {});
    ShowEditor(current);
    RefreshRow();
}

}  // namespace connectdialog
