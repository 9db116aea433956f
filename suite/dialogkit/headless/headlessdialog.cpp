#include "suite/dialogkit/headless/headlessdialog.h"

#include <algorithm>
#include <utility>

#include "resources/accelerators.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "suite/dialogkit/headless/headlesstree.h"

namespace connectdialog {

namespace {

// The size of an average character, of which a dialog unit is a quarter across and an eighth down.
constexpr int kCharacterWidth = 6;
constexpr int kCharacterHeight = 13;
constexpr char16_t kFirstWideCharacter = 0x1100;
constexpr std::int32_t kToolbarHeight = 24;
constexpr std::int32_t kToolbarButton = 24;
constexpr std::int32_t kToolbarSeparator = 8;
/// The window's inside on the screen.
constexpr VPoint kCorner{100, 100};

}  // namespace

std::int32_t HeadlessTextWidth(std::u16string_view text) {
    std::int32_t width = 0;
    for (const char16_t character : text) width += kCharacterWidth * (character >= kFirstWideCharacter ? 2 : 1);
    return width;
}

HeadlessDialog::HeadlessDialog(HeadlessDialogKit& kit, const DialogTemplate& dialog, IDialogEvents& events,
                               HeadlessDialog* owner)
    : kit(kit),
      dialog(dialog),
      events(events),
      title(dialog.title),
      inside(HeadlessDialog::ToPixels({0, 0, dialog.width, dialog.height})),
      owner(owner),
      isHidden(owner != nullptr) {
    if (owner != nullptr) owner->pages.push_back(this);
    for (const ControlTemplate& row : dialog.controls) {
        controls.push_back(
            {row.kind, row.id, row.label, HeadlessDialog::ToPixels(row.place), false, true, true, nullptr, {}, {}});
        if (focus == kNoId && TakesFocus(row.kind)) focus = row.id;
    }
}

HeadlessDialog::~HeadlessDialog() {
    if (owner != nullptr) std::erase(owner->pages, this);
}

HeadlessDialog* HeadlessDialog::GetPage() const {
    const auto shown =
        std::find_if(pages.begin(), pages.end(), [](const HeadlessDialog* page) { return page->IsOpen(); });
    return shown != pages.end() ? *shown : nullptr;
}

std::unique_ptr<IDialogWindow> HeadlessDialog::CreatePage(const DialogTemplate& page, IDialogEvents& pageEvents,
                                                          const VRectangle& place, int) {
    auto made = std::make_unique<HeadlessDialog>(kit, page, pageEvents, this);
    made->SetInside(place.right - place.left, place.bottom - place.top);
    return made;
}

const HeadlessDialog::Control* HeadlessDialog::Find(int id) const {
    if (id == kNoId) return nullptr;
    const auto found = std::find_if(controls.begin(), controls.end(), [&](const Control& c) { return c.id == id; });
    return found != controls.end() ? &*found : nullptr;
}

HeadlessDialog::Control* HeadlessDialog::FindUsable(int id) {
    Control* control = Find(id);
    return IsOpen() && control != nullptr && control->isEnabled && control->isShown ? control : nullptr;
}

HeadlessDialog::Control* HeadlessDialog::FindUsable(int id, ControlKind kind) {
    Control* control = FindUsable(id);
    return control != nullptr && control->kind == kind ? control : nullptr;
}

HeadlessDialog::Control* HeadlessDialog::FindUsableButton(int id) {
    Control* button = FindUsable(id, ControlKind::kButton);
    return button != nullptr ? button : FindUsable(id, ControlKind::kDefaultButton);
}

HeadlessDialog::Control* HeadlessDialog::FindReturnButton() {
    if (Control* focused = FindUsableButton(focus)) return focused;
    return FindDefaultButton();
}

HeadlessDialog::Control* HeadlessDialog::FindDefaultButton() {
    for (const Control& control : controls)
        if (control.kind == ControlKind::kDefaultButton) return FindUsableButton(control.id);
    return nullptr;
}

bool HeadlessDialog::PressDefaultButton() {
    const Control* button = FindDefaultButton();
    return button != nullptr && Press(button->id);
}

bool HeadlessDialog::EndLabelEdits() {
    for (const Control& control : controls) {
        if (control.tree == nullptr) continue;
        control.tree->EndLabelEdit(true);
        if (control.tree->IsEditing()) return false;
    }
    return !isClosed;
}

bool HeadlessDialog::Enter(Control& control, const VUnicodeString& text) {
    if (!EndLabelEdits()) return false;
    focus = control.id;
    if (control.text == text) return true;
    control.text = text;
    events.OnTextChanged(control.id);
    return true;
}

bool HeadlessDialog::Type(int id, const VUnicodeString& text) {
    Control* control = FindUsable(id);
    if (control == nullptr || !HoldsInput(control->kind) || control->kind == ControlKind::kComboBox) return false;
    return Enter(*control, text);
}

bool HeadlessDialog::Pick(int id, const VUnicodeString& text) {
    Control* control = FindUsable(id, ControlKind::kComboBox);
    if (control == nullptr || std::ranges::find(control->choices, text) == control->choices.end()) return false;
    return Enter(*control, text);
}

bool HeadlessDialog::Tick(int id, bool isChecked) {
    Control* control = FindUsable(id, ControlKind::kCheckBox);
    if (control == nullptr || !EndLabelEdits()) return false;
    focus = id;
    if (control->isChecked == isChecked) return true;
    control->isChecked = isChecked;
    events.OnCommandEvent(id);
    return true;
}

bool HeadlessDialog::Press(int id) {
    if (PressToolbar(id)) return true;
    if (FindUsableButton(id) == nullptr || !EndLabelEdits()) return false;
    focus = id;
    events.OnCommandEvent(id);
    return true;
}

bool HeadlessDialog::PressLabelled(const VUnicodeString& label) {
    for (const Control& control : controls)
        if (control.text == label && control.isShown && Press(control.id)) return true;
    return false;
}

bool HeadlessDialog::PressToolbar(int command) {
    if (!IsOpen() || toolbar == nullptr || command == 0) return false;
    for (const VToolbarState::Button& button : toolbar->GetButtons()) {
        if (button.command != command || !button.isEnabled) continue;
        if (!EndLabelEdits()) return false;
        events.OnCommandEvent(command);
        return true;
    }
    return false;
}

bool HeadlessDialog::PressKey(std::uint16_t key, KeyModifiers modifiers) {
    if (!IsOpen()) return false;
    HeadlessTree* tree = GetTree(focus);
    // While a label is edited the edit box gets every key.
    if (tree != nullptr && tree->IsEditing()) return tree->PressKey(key, modifiers);
    if (events.OnKeyEvent(key, modifiers)) return true;
    if (key == kKeyEscape) return owner != nullptr ? owner->CloseByFrame() : CloseByFrame();
    if (Control* memo = FindUsable(focus, ControlKind::kMemo); memo != nullptr && key == kKeyReturn)
        return Type(focus, memo->text + u'\n');
    if (key == kKeyReturn) {
        const Control* button = FindReturnButton();
        if (button == nullptr && owner != nullptr) return owner->PressDefaultButton();
        return button != nullptr && Press(button->id);
    }
    return tree != nullptr && tree->PressKey(key, modifiers);
}

bool HeadlessDialog::CloseByFrame() {
    return Choose(kIdCancel);
}

bool HeadlessDialog::Choose(int command) {
    if (!IsOpen()) return false;
    events.OnCommandEvent(command);
    return true;
}

void HeadlessDialog::Elapse(unsigned milliseconds) {
    while (!timers.empty() && !isClosed) {
        const auto next = std::min_element(timers.begin(), timers.end(),
                                           [](const Timer& a, const Timer& b) { return a.left < b.left; });
        const unsigned step = next->left;
        if (step > milliseconds) break;
        milliseconds -= step;
        for (Timer& timer : timers) timer.left -= step;
        next->left = next->period;
        events.OnTimer(next->number);
    }
    for (Timer& timer : timers) timer.left -= std::min(timer.left, milliseconds);
}

bool HeadlessDialog::Resize(std::int32_t width, std::int32_t height) {
    if (isClosed || least.x < 0) return false;
    inside = {0, 0, std::max(width, least.x), std::max(height, least.y)};
    events.OnSize(inside.right, inside.bottom);
    return true;
}

HeadlessTree* HeadlessDialog::GetTree(int id) const {
    const Control* control = Find(id);
    return control != nullptr ? control->tree.get() : nullptr;
}

void HeadlessDialog::RunModal() {
    kit.Play(*this);
}

VUnicodeString HeadlessDialog::GetText(int id) const {
    const Control* control = Find(id);
    if (control == nullptr) return {};
    VUnicodeString text;
    if (control->kind == ControlKind::kPassword) text.MarkSensitive();
    text += control->text;
    return text;
}
void HeadlessDialog::SetText(int id, const VUnicodeString& text) {
    Control* control = Find(id);
    if (control == nullptr) return;
    const bool isOffered =
        control->kind != ControlKind::kComboBox || std::ranges::find(control->choices, text) != control->choices.end();
    control->text = isOffered ? text : VUnicodeString();
}
void HeadlessDialog::SetChoices(int id, std::span<const VUnicodeString> choices) {
    Control* control = Find(id);
    if (control == nullptr || control->kind != ControlKind::kComboBox) return;
    control->choices.assign(choices.begin(), choices.end());
    control->text = VUnicodeString();
}
bool HeadlessDialog::IsChecked(int id) const {
    const Control* control = Find(id);
    return control != nullptr && control->isChecked;
}
void HeadlessDialog::SetChecked(int id, bool isChecked) {
    if (Control* control = Find(id)) control->isChecked = isChecked;
}
bool HeadlessDialog::IsEnabled(int id) const {
    const Control* control = Find(id);
    return control != nullptr && control->isEnabled;
}
void HeadlessDialog::SetEnabled(int id, bool isEnabled) {
    if (Control* control = Find(id)) control->isEnabled = isEnabled;
}
bool HeadlessDialog::IsShown(int id) const {
    const Control* control = Find(id);
    return control != nullptr && control->isShown;
}
void HeadlessDialog::SetShown(int id, bool isShown) {
    if (Control* control = Find(id)) control->isShown = isShown;
}
void HeadlessDialog::SetFocus(int id) {
    if (Find(id) != nullptr) focus = id;
}
VRectangle HeadlessDialog::GetRectangle(int id) const {
    const Control* control = Find(id);
    return control != nullptr ? control->place : VRectangle();
}
void HeadlessDialog::SetRectangle(int id, const VRectangle& place) {
    if (Control* control = Find(id)) control->place = place;
}

VRectangle HeadlessDialog::ToPixels(const DialogRectangle& place) const {
    const auto across = [](int units) { return units * kCharacterWidth / 4; };
    const auto down = [](int units) { return units * kCharacterHeight / 8; };
    return {across(place.x), down(place.y), across(place.x + place.width), down(place.y + place.height)};
}

std::int32_t HeadlessDialog::GetTextWidth(int, std::u16string_view text) const {
    return HeadlessTextWidth(text);
}

void HeadlessDialog::SetFont(int id, const VUnicodeString& family, int points) {
    if (Control* control = Find(id)) control->font.Format(u"%1,%2!d!", family, points);
}
VUnicodeString HeadlessDialog::GetFont(int id) const {
    const Control* control = Find(id);
    return control != nullptr ? control->font : VUnicodeString();
}
VPoint HeadlessDialog::ToScreen(int id, VPoint point) const {
    const VRectangle place = GetRectangle(id);
    return {kCorner.x + place.left + point.x, kCorner.y + place.top + point.y};
}

void HeadlessDialog::SetInside(std::int32_t width, std::int32_t height) {
    inside = {0, 0, width, height};
}
void HeadlessDialog::LetResize(std::int32_t leastWidth, std::int32_t leastHeight) {
    least = {leastWidth, leastHeight};
}
VWindowPlacement HeadlessDialog::GetPlacement() const {
    VWindowPlacement placement = VWindowPlacement::Unplaced();
    placement.normal = {kCorner.x, kCorner.y, kCorner.x + inside.right, kCorner.y + inside.bottom};
    return placement;
}

int HeadlessDialog::StartTimer(unsigned milliseconds) {
    timers.push_back({++lastTimer, std::max(milliseconds, 1U), std::max(milliseconds, 1U)});
    return lastTimer;
}
void HeadlessDialog::StopTimer(int timer) {
    std::erase_if(timers, [&](const Timer& known) { return known.number == timer; });
}

ITreeView* HeadlessDialog::AttachTree(int id, VTreeItems& items, ITreeEvents& treeEvents) {
    Control* control = Find(id);
    if (control == nullptr || control->kind != ControlKind::kTree) return nullptr;
    control->tree = std::make_unique<HeadlessTree>(*this, id, items, treeEvents);
    return control->tree.get();
}

void HeadlessDialog::ShowToolbar(int id, const VToolbarState& newToolbar) {
    toolbar = &newToolbar;
    if (Find(id) != nullptr) return;
    std::int32_t width = 0;
    for (const VToolbarState::Button& button : toolbar->GetButtons())
        width += button.command != 0 ? kToolbarButton : kToolbarSeparator;
    controls.push_back(
        {ControlKind::kToolbar, id, {}, {0, 0, width, kToolbarHeight}, false, true, true, nullptr, {}, {}});
}

}  // namespace connectdialog
