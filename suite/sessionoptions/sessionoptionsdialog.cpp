#include "suite/sessionoptions/sessionoptionsdialog.h"

#include <map>

#include "config/settingwalk.h"
#include "foundation/casefold.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/vmessagebox.h"

namespace connectdialog {

namespace {

constexpr char16_t kMultiNote[] = u"只有改变的设置才会应用到所选的会话。";
constexpr char16_t kNothingNote[] = u"当前协议没有这一页的设置。";

const OptionPage& FindPage(std::u16string_view path) {
    if (path.ends_with(u'+')) path.remove_suffix(1);
    for (const OptionPage& page : GetOptionPages())
        if (EqualsNoCase(page.path, path)) return page;
    return GetOptionPages().front();
}

std::u16string_view ParentOf(std::u16string_view path) {
    const std::size_t end = path.rfind(u'\\');
    return end != path.npos ? path.substr(0, end) : std::u16string_view();
}

}  // namespace

SessionOptionsDialog::SessionOptionsDialog(ISessionConfig& session, const VUnicodeString& firstPage, bool isMulti,
                                           bool isNew, VWindow* parent)
    : VDialog(GetOptionTemplate(), parent),
      session(session),
      page(&FindPage(firstPage)),
      isMulti(isMulti),
      isNew(isNew),
      pages([this](const void* data) { return ChoosePage(*static_cast<const OptionPage*>(data)); }),
      allSettings(*this, session) {
    for (const OptionControl& control : GetOptionControls()) fields.push_back({control, false});
}

VUnicodeString SessionOptionsDialog::GetPagePath() const {
    VUnicodeString path = page->path;
    for (const OptionPage& other : GetOptionPages())
        if (ParentOf(other.path) == page->path) return path + u'+';
    return path;
}

void SessionOptionsDialog::OnInitDialog() {
    VDialog::OnInitDialog();
    if (!isNew && !isMulti) SetTitle(u"会话选项 - "_v + session.GetName());
    for (const Field& field : fields)
        if (field.field.kind != FieldKind::kSwitch)
            SetControlText(field.label, VUnicodeString(field.field.label) + u':');
    allSettings.Attach();
    ListPages();
    ShowPage();
    for (const Field& field : fields)
        if (field.isShown && GetWindow()->IsEnabled(field.control)) return FocusControl(field.control);
}

void SessionOptionsDialog::ListPages() {
    pages.Attach(*GetWindow(), OptionIds::kPages);
    std::map<std::u16string_view, TreeItem> items;
    for (const OptionPage& listed : GetOptionPages()) {
        const auto parent = items.find(ParentOf(listed.path));
        items[listed.path] = pages.Add(parent != items.end() ? parent->second : TreeItem::kNone, listed.title, &listed);
    }
    pages.Select(items[page->path]);
}

bool SessionOptionsDialog::ChoosePage(const OptionPage& chosen) {
    if (!TakePage()) return false;
    page = &chosen;
    ShowPage();
    return true;
}

void SessionOptionsDialog::ShowPage() {
    SetControlText(OptionIds::kPageFrame, page->title);
    for (Field& field : fields) field.isShown = false;
    allSettings.Show(IsAllSettings());
    LayOutFields();
}

void SessionOptionsDialog::LayOutFields() {
    std::int16_t top = 0;
    for (Field& field : fields) {
        VProfileData* const setting = &field.page == page ? FindSettingOf(field) : nullptr;
        const bool isShown = &field.page == page && (setting != nullptr || field.field.kind == FieldKind::kName);
        if (isShown && !field.isShown) Fill(field, setting);
        field.isShown = isShown;
        ShowControl(field.label, isShown && field.field.kind != FieldKind::kSwitch);
        ShowControl(field.control, isShown);
        if (!isShown) continue;
        Place(field, top);
        top = static_cast<std::int16_t>(top + PlaceRow(field.field.kind, 0).height);
    }
    const bool isEmpty = top == 0 && !IsAllSettings();
    SetControlText(OptionIds::kNote, isEmpty ? kNothingNote : isMulti ? kMultiNote : u"");
}

void SessionOptionsDialog::Place(const Field& field, std::int16_t top) {
    const OptionRowPlaces places = PlaceRow(field.field.kind, top);
    GetWindow()->SetRectangle(field.label, GetWindow()->ToPixels(places.label));
    GetWindow()->SetRectangle(field.control, GetWindow()->ToPixels(places.control));
}

VProfileData* SessionOptionsDialog::FindSettingOf(const Field& field) const {
    return field.field.kind != FieldKind::kName ? FindSetting(session, field.field.setting) : nullptr;
}

void SessionOptionsDialog::Fill(const Field& field, VProfileData* setting) {
    if (setting == nullptr) {
        EnableControl(field.control, !isMulti && !session.IsDefaultSession());
        return SetControlText(field.control, session.GetName());
    }
    const VUnicodeString shown = ShowField(field.field, *setting);
    if (field.field.kind == FieldKind::kSwitch) return SetControlChecked(field.control, shown == kSwitchWords[0].shown);
    if (GetControlKind(field.field.kind) == ControlKind::kComboBox)
        SetControlChoices(field.control, ListChoices(field.field, session, *setting));
    SetControlText(field.control, shown);
}

VUnicodeString SessionOptionsDialog::GetShown(const Field& field) const {
    if (field.field.kind != FieldKind::kSwitch) return GetControlText(field.control);
    return kSwitchWords[IsControlChecked(field.control) ? 0 : 1].shown;
}

bool SessionOptionsDialog::TakePage() {
    VUnicodeString refusal;
    if (IsAllSettings()) {
        if (allSettings.Take(refusal)) return true;
        VMessageBox(this, refusal, kBoxWarning);
        return false;
    }
    for (const Field& field : fields) {
        if (!field.isShown) continue;
        VProfileData* const setting = FindSettingOf(field);
        if (setting == nullptr ? TakeName(field) : TakeField(field.field, session, *setting, GetShown(field), refusal))
            continue;
        if (setting != nullptr) VMessageBox(this, refusal, kBoxWarning);
        FocusControl(field.control);
        return false;
    }
    return true;
}

bool SessionOptionsDialog::TakeName(const Field& field) {
    VUnicodeString name = GetControlText(field.control);
    name.TrimLeft();
    name.TrimRight();
    if (name == session.GetName()) return true;
    if (!ValidateSessionName(session.GetPath(), session.GetName(), name, isNew, this)) return false;
    session.SetName(name);
    return true;
}

bool SessionOptionsDialog::OnCommand(int command) {
    if (command != OptionIds::kForget) return VDialog::OnCommand(command);
    allSettings.Forget();
    return true;
}

void SessionOptionsDialog::OnControlChanged(int id) {
    if (IsAllSettings()) return allSettings.OnControlChanged(id);
    for (const Field& field : fields)
        if (field.control == id && field.field.kind == FieldKind::kProtocol) return TakeProtocol(field);
}

/// Each protocol has fields of its own: what was typed into one that goes is taken first, as far as it is good.
void SessionOptionsDialog::TakeProtocol(const Field& choice) {
    VUnicodeString refusal;
    for (const Field& field : fields) {
        VProfileData* const setting = field.isShown && &field != &choice ? FindSettingOf(field) : nullptr;
        if (setting != nullptr) TakeField(field.field, session, *setting, GetShown(field), refusal);
    }
    TakeField(choice.field, session, *FindSettingOf(choice), GetShown(choice), refusal);
    LayOutFields();
}

void SessionOptionsDialog::OnOK() {
    if (TakePage()) EndDialog(kDialogAccepted);
}

}  // namespace connectdialog
