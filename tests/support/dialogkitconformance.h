// What every back end of the dialogs owes, whoever plays the user.
//
// A back end takes part with a type that names its classes: `Kit`, which expects dialogs, boxes and menus and plays the
// user in them, `Dialog` and `Tree`, in which scripts act; `CanDrag()` tells whether the screen at hand has drags. The
// names of their operations are those of the headless one. What it owes with trees stands in treeconformance.h.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "imports/dialogkit/treeview.h"
#include "imports/dialogkit/vdialog.h"
#include "imports/dialogkit/vmessagebox.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "imports/dialogkit/vtoolbarstate.h"
#include "platform/codepage.h"
#include "resources/accelerators.h"

namespace connectdialog::test {

namespace conformance {

inline constexpr int kEdit = 11;
inline constexpr int kBox = 12;
inline constexpr int kTree = 13;
inline constexpr int kOther = 14;
inline constexpr int kLabel = 15;
inline constexpr int kBar = 134;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::kStatic, kLabel, u"名称(&N):", {7, 7, 60, 9}},
    {ControlKind::kEdit, kEdit, u"", {70, 7, 120, 14}},
    {ControlKind::kGroupBox, kNoId, u"范围", {7, 24, 184, 24}},
    {ControlKind::kCheckBox, kBox, u"主机名(&H)", {14, 34, 100, 10}},
    {ControlKind::kTree, kTree, u"", {7, 52, 184, 100}},
    {ControlKind::kDefaultButton, kIdOk, u"确定", {7, 160, 50, 14}},
    {ControlKind::kButton, kOther, u"其他(&T)", {60, 160, 50, 14}},
    {ControlKind::kButton, kIdCancel, u"取消", {115, 160, 50, 14}},
};
inline constexpr DialogTemplate kTemplate{90, 198, 181, u"试验", kControls};
inline constexpr int kPassword = 16;
inline constexpr int kMemo = 17;
inline constexpr int kCombo = 18;
inline constexpr ControlTemplate kInputControls[] = {
    {ControlKind::kStatic, kNoId, u"密码(&P):", {7, 7, 60, 9}},
    {ControlKind::kPassword, kPassword, u"", {70, 7, 120, 14}},
    {ControlKind::kStatic, kNoId, u"描述(&D):", {7, 24, 60, 9}},
    {ControlKind::kMemo, kMemo, u"", {70, 24, 120, 40}},
    {ControlKind::kStatic, kNoId, u"协议(&R):", {7, 67, 60, 9}},
    {ControlKind::kComboBox, kCombo, u"", {70, 67, 120, 14}},
    {ControlKind::kDefaultButton, kIdOk, u"确定", {7, 88, 50, 14}},
};
inline constexpr DialogTemplate kInputTemplate{91, 198, 109, u"输入", kInputControls};
inline constexpr int kPageEdit = 19;
inline constexpr int kPageBox = 20;
inline constexpr ControlTemplate kPageControls[] = {
    {ControlKind::kStatic, kNoId, u"主机(&S):", {7, 7, 40, 9}},
    {ControlKind::kEdit, kPageEdit, u"", {50, 7, 60, 14}},
    {ControlKind::kCheckBox, kPageBox, u"压缩(&Z)", {50, 26, 60, 10}},
};
inline constexpr DialogTemplate kPageTemplate{92, 120, 43, u"", kPageControls};
inline constexpr Accelerator kKeys[] = {
    {Accelerator::kControl, u'F', 77}, {Accelerator::kAlt, u'C', 79}, {Accelerator::kNone, kKeyF3, 78}};

/// Notes what it is told, one word an event.
class Notes : public VDialog, public ITreeEvents, public ITreeItemsOwner {
  public:
    explicit Notes(VWindow* parent = nullptr, const DialogTemplate& shown = kTemplate)
        : VDialog(shown, parent), items(*this) {
        SetAccelerators(kKeys);
    }

    /// What came since the last call.
    std::string Take() { return std::exchange(notes, {}); }
    void Note(const std::string& what) { notes += (notes.empty() ? "" : " ") + what; }

    /// "root" with the children "a", "b" to "e", of which "a" has a child "aa"; all expanded but "a".
    void Plant() {
        root = Add(TreeItem::kNone, u"root");
        for (const char16_t* name : {u"a", u"b", u"c", u"d", u"e"}) Add(root, name);
        inner = Add(items.GetFirstChild(root), u"aa");
        items.SetState(root, kTreeExpanded, true);
    }
    TreeItem Add(TreeItem parent, std::u16string_view text) {
        return items.Insert(parent, TreePlace::kLast, TreeItem::kNone, text, 2, 2, nullptr);
    }
    TreeItem Child(int place) const {
        TreeItem item = items.GetFirstChild(root);
        while (place-- > 0) item = items.GetNextSibling(item);
        return item;
    }

    // ITreeEvents.
    void OnMouseDown(MouseButton button, VPoint point, KeyModifiers modifiers) override {
        const TreeHit hit = view->HitTest(point);
        Note((button == MouseButton::kLeft ? "left:" : "right:") + Name(hit.item) + ":" +
             std::to_string(static_cast<int>(hit.part)) + ":" + std::to_string(modifiers));
        if (hit.part == TreePart::kExpander)
            items.SetState(hit.item, kTreeExpanded, !items.HasState(hit.item, kTreeExpanded));
    }
    void OnDoubleClick(VPoint point) override { Note("double:" + Name(view->HitTest(point).item)); }
    void OnKeyDown(std::uint16_t key, KeyModifiers modifiers) override {
        Note("key:" + std::to_string(key) + ":" + std::to_string(modifiers));
    }
    void OnText(const VUnicodeString& text) override { Note("typed:" + platform::ToNarrow(text)); }
    void OnBeginDrag(TreeItem item, VPoint) override {
        Note("drag:" + Name(item));
        if (item == root) return;
        const DropEffect done = view->RunDrag(item, {u"FolderTree"_v, {std::byte{7}, std::byte{0}}});
        Note("dragged:" + std::to_string(static_cast<int>(done)));
    }
    bool OnBeginLabelEdit(TreeItem item) override {
        Note("edit:" + Name(item));
        return item != root;
    }
    void OnEndLabelEdit(TreeItem item, const VUnicodeString* text) override {
        Note("edited:" + Name(item) + ":" + (text != nullptr ? platform::ToNarrow(*text) : "cancelled"));
        if (text != nullptr && *text == u"refused") view->BeginLabelEdit(item);
    }
    bool OnInfoTip(TreeItem item, VUnicodeString& text) override {
        text = u"<b>tip</b> of "_v + items.GetText(item);
        return item != root;
    }
    DropEffect OnDragEnter(const VDragData& data, VPoint point, KeyModifiers modifiers) override {
        Note("enter:" + std::to_string(data.GetBytes().size()));
        return EffectAt(data, point, modifiers);
    }
    DropEffect OnDragOver(const VDragData& data, VPoint point, KeyModifiers modifiers) override {
        return EffectAt(data, point, modifiers);
    }
    void OnDragLeave() override { Note("leave"); }
    bool OnDrop(const VDragData&, VPoint point, DropEffect effect) override {
        const TreeItem target = view->HitTest(point).item;
        Note("drop:" + Name(target) + ":" + std::to_string(static_cast<int>(effect)));
        return target != inner;
    }
    void OnItemDeleted(void*) override {}

    VTreeItems items;
    TreeItem root = TreeItem::kNone;
    TreeItem inner = TreeItem::kNone;
    ITreeView* view = nullptr;

  protected:
    void OnInitDialog() override {
        VDialog::OnInitDialog();
        view = GetWindow()->AttachTree(kTree, items, *this);
    }
    bool OnCommand(int command) override {
        Note(std::to_string(command) + (command == kBox && IsControlChecked(kBox) ? "+" : ""));
        return command == 77 || command == 78 || command == 79 || VDialog::OnCommand(command);
    }
    void OnControlChanged(int id) override {
        Note("text:" + std::to_string(id) + ":" + platform::ToNarrow(GetControlText(id)));
    }
    void OnTimer(int timer) override {
        Note("timer");
        GetWindow()->StopTimer(timer);
    }

  private:
    std::string Name(TreeItem item) const { return platform::ToNarrow(items.GetText(item)); }
    /// Nothing goes into the root or with the Shift key; the Control key copies.
    DropEffect EffectAt(const VDragData& data, VPoint point, KeyModifiers modifiers) const {
        const TreeItem target = view->HitTest(point).item;
        const bool isRefused = !data.HasFormat(u"FolderTree") || target == TreeItem::kNone || target == root;
        if (isRefused || (modifiers & Accelerator::kShift) != 0) return DropEffect::kNone;
        return (modifiers & Accelerator::kControl) != 0 ? DropEffect::kCopy : DropEffect::kMove;
    }

    std::string notes;
};

/// A page that notes into the dialog's notes.
class Page : public VPluginDialog {
  public:
    explicit Page(Notes& notes) : VPluginDialog(kPageTemplate, nullptr), notes(notes) {}

  protected:
    bool OnCommand(int command) override {
        notes.Note("page:" + std::to_string(command));
        return VPluginDialog::OnCommand(command);
    }
    void OnControlChanged(int id) override { notes.Note("page:" + platform::ToNarrow(GetControlText(id))); }

  private:
    Notes& notes;
};

}  // namespace conformance

template <class BackEnd>
class DialogKitConformance : public ::testing::Test {
  protected:
    using Dialog = typename BackEnd::Dialog;

    ~DialogKitConformance() override { EXPECT_EQ(kit.TakeFaults(), ""); }

    /// Shows the dialog with a planted tree and lets the script play the user.
    template <class Script>
    std::int64_t Run(Script script) {
        notes.Plant();
        kit.ExpectDialog(conformance::kTemplate.id, [&](Dialog& dialog) {
            window = notes.GetWindow();
            notes.Take();
            script(dialog);
        });
        return notes.DoModal();
    }

    typename BackEnd::Kit kit;
    conformance::Notes notes;
    IDialogWindow* window = nullptr;
};

TYPED_TEST_SUITE_P(DialogKitConformance);

TYPED_TEST_P(DialogKitConformance, WhatTheUserDoesWithControlsIsToldOnceAndWhatCodeDoesIsNot) {
    using namespace conformance;
    const std::int64_t result = this->Run([&](auto& dialog) {
        IDialogWindow& window = *this->window;
        EXPECT_EQ(dialog.GetTitle(), u"试验");
        EXPECT_EQ(dialog.GetFocus(), kEdit);
        window.SetText(kEdit, u"会话"_v);
        window.SetChecked(kBox, true);
        window.SetText(kLabel, u"a && b"_v);
        window.SetTitle(u"新"_v);
        EXPECT_EQ(this->notes.Take(), "");
        EXPECT_EQ(dialog.GetTitle(), u"新");
        EXPECT_EQ(dialog.GetText(kEdit), u"会话");
        EXPECT_EQ(dialog.GetText(kLabel), u"a && b");
        EXPECT_TRUE(dialog.IsChecked(kBox));

        EXPECT_TRUE(dialog.Type(kEdit, u"主机"_v));
        EXPECT_EQ(this->notes.Take(), "text:11:主机");
        EXPECT_TRUE(dialog.Tick(kBox, false));
        EXPECT_TRUE(dialog.Tick(kBox, true));
        EXPECT_EQ(dialog.GetFocus(), kBox);
        EXPECT_TRUE(dialog.Press(kOther));
        EXPECT_TRUE(dialog.PressLabelled(u"其他(&T)"_v));
        EXPECT_EQ(this->notes.Take(), "12 12+ 14 14");
        dialog.Press(kIdOk);
        EXPECT_TRUE(dialog.IsClosed());
        EXPECT_FALSE(dialog.Press(kOther));
    });
    EXPECT_EQ(result, kDialogAccepted);
    EXPECT_EQ(this->notes.Take(), "1");
}

TYPED_TEST_P(DialogKitConformance, PasswordsLinesAndChoicesAreTheUsers) {
    using namespace conformance;
    Notes notes(nullptr, kInputTemplate);
    this->kit.ExpectDialog(kInputTemplate.id, [&](auto& dialog) {
        IDialogWindow& window = *notes.GetWindow();
        const std::vector<VUnicodeString> choices = {u"SSH2"_v, u"A && &B"_v, u"无"_v};
        window.SetChoices(kCombo, choices);
        EXPECT_EQ(window.GetText(kCombo), u"");
        window.SetText(kCombo, u"无"_v);
        EXPECT_EQ(window.GetText(kCombo), u"无");
        window.SetText(kCombo, u"RLogin"_v);
        EXPECT_EQ(window.GetText(kCombo), u"") << "it is not offered";
        window.SetText(kMemo, u"a\nb"_v);
        window.SetChoices(kMemo, choices);
        EXPECT_EQ(notes.Take(), "") << "what code does";
        EXPECT_TRUE(dialog.Pick(kCombo, u"SSH2"_v));
        EXPECT_EQ(notes.Take(), "text:18:SSH2");
        EXPECT_TRUE(dialog.Pick(kCombo, u"A && &B"_v));
        EXPECT_EQ(dialog.GetText(kCombo), u"A && &B");
        EXPECT_FALSE(dialog.Pick(kCombo, u"RLogin"_v));
        EXPECT_FALSE(dialog.Type(kCombo, u"RLogin"_v));

        EXPECT_TRUE(dialog.Type(kPassword, u"s3cret"_v));
        EXPECT_EQ(window.GetText(kPassword), u"s3cret");
        EXPECT_TRUE(window.GetText(kPassword).IsSensitive());
        window.SetFocus(kMemo);
        notes.Take();
        dialog.PressKey(kKeyReturn);
        EXPECT_FALSE(dialog.IsClosed());
        EXPECT_NE(notes.Take(), "");
        EXPECT_TRUE(dialog.Type(kMemo, u"x\ny"_v));
        EXPECT_EQ(window.GetText(kMemo), u"x\ny");
        window.SetFocus(kCombo);
        dialog.PressKey(kKeyReturn);
        EXPECT_TRUE(dialog.IsClosed());
    });
    EXPECT_EQ(notes.DoModal(), kDialogAccepted);
}

TYPED_TEST_P(DialogKitConformance, WhatIsDisabledOrHiddenCannotBeUsedAndUnknownIdsAreHarmless) {
    using namespace conformance;
    this->Run([&](auto& dialog) {
        IDialogWindow& window = *this->window;
        for (const int id : {kEdit, kBox, kOther, kIdOk}) window.SetEnabled(id, false);
        EXPECT_FALSE(dialog.Type(kEdit, u"x"_v));
        EXPECT_FALSE(dialog.Tick(kBox, true));
        EXPECT_FALSE(dialog.Press(kOther));
        dialog.PressKey(kKeyReturn);
        for (const int id : {kEdit, kBox, kOther, kIdOk}) {
            EXPECT_FALSE(window.IsEnabled(id));
            window.SetEnabled(id, true);
            EXPECT_TRUE(window.IsEnabled(id));
        }
        window.SetShown(kOther, false);
        EXPECT_FALSE(dialog.Press(kOther));
        EXPECT_FALSE(window.IsShown(kOther));
        for (const int id : {kNoId, 0, 999}) {
            window.SetText(id, u"x"_v);
            window.SetEnabled(id, false);
            window.SetFocus(id);
            window.SetRectangle(id, {1, 2, 3, 4});
            EXPECT_EQ(window.GetText(id), u"");
            EXPECT_FALSE(window.IsEnabled(id) || window.IsShown(id) || window.IsChecked(id));
            EXPECT_EQ(window.GetRectangle(id), VRectangle());
            EXPECT_EQ(window.AttachTree(id, this->notes.items, this->notes), nullptr);
        }
        EXPECT_EQ(window.AttachTree(kEdit, this->notes.items, this->notes), nullptr) << "no tree control";
        EXPECT_EQ(this->notes.Take(), "");
    });
}

TYPED_TEST_P(DialogKitConformance, KeysComeToTheDialogBeforeAControlSeesThem) {
    using namespace conformance;
    this->Run([&](auto& dialog) {
        this->window->SetFocus(kEdit);
        dialog.PressKey(kKeyF3);
        dialog.PressKey(u'F', Accelerator::kControl);
        dialog.PressKey(u'C', Accelerator::kAlt);
        EXPECT_EQ(this->notes.Take(), "78 77 79");
        this->window->SetFocus(kTree);
        dialog.PressKey(kKeyDown, Accelerator::kShift);
        dialog.PressKey(kKeyF3);
        dialog.PressKey(kKeyDelete);
        EXPECT_EQ(this->notes.Take(), "key:40:4 78 key:46:0");
        this->window->SetFocus(kOther);
        dialog.PressKey(kKeyReturn);
        EXPECT_EQ(this->notes.Take(), "14") << "the button with the focus";
        this->window->SetFocus(kTree);
        dialog.PressKey(kKeyReturn);
        EXPECT_EQ(this->notes.Take(), "1") << "else the default button";
    });
    EXPECT_EQ(this->Run([](auto& dialog) { dialog.PressKey(kKeyEscape); }), kDialogCancelled);
    EXPECT_EQ(this->notes.Take(), "2");
    EXPECT_EQ(this->Run([](auto& dialog) { dialog.CloseByFrame(); }), kDialogCancelled);
    EXPECT_EQ(this->notes.Take(), "2");
}

TYPED_TEST_P(DialogKitConformance, APageLiesInADialogWhoseReturnAndEscapeItShares) {
    using namespace conformance;
    Page first(this->notes);
    Page second(this->notes);
    const std::int64_t result = this->Run([&](auto& dialog) {
        const VRectangle place = this->window->ToPixels({7, 52, 120, 43});
        ASSERT_TRUE(first.CreatePage(this->notes, place, kBox) && second.CreatePage(this->notes, place, kNoId));
        EXPECT_EQ(dialog.GetPage(), nullptr) << "they are made hidden";
        EXPECT_EQ(dialog.GetFocus(), kEdit);
        first.ShowPage(true);
        ASSERT_NE(dialog.GetPage(), nullptr);
        EXPECT_EQ(first.GetWindow()->GetInside().right, place.right - place.left);
        EXPECT_EQ(first.GetWindow()->GetRectangle(kPageEdit), this->window->ToPixels({50, 7, 60, 14}));
        first.SetControlText(kPageEdit, u"by code"_v);
        EXPECT_TRUE(dialog.GetPage()->Type(kPageEdit, u"主机"_v));
        EXPECT_TRUE(dialog.GetPage()->Tick(kPageBox, true));
        EXPECT_EQ(this->notes.Take(), "page:主机 page:20");
        EXPECT_EQ(second.GetControlText(kPageEdit), u"") << "ids are the page's own";

        first.ShowPage(false);
        second.ShowPage(true);
        EXPECT_EQ(dialog.GetPage()->GetText(kPageEdit), u"");
        second.Destroy();
        EXPECT_EQ(dialog.GetPage(), nullptr);
        EXPECT_TRUE(dialog.Press(kOther));
        EXPECT_EQ(this->notes.Take(), "14");

        first.ShowPage(true);
        first.FocusFirstControl();
        EXPECT_EQ(dialog.GetPage()->GetFocus(), kPageEdit);
        this->window->SetEnabled(kIdOk, false);
        dialog.GetPage()->PressKey(kKeyReturn);
        EXPECT_EQ(this->notes.Take(), "");
        this->window->SetEnabled(kIdOk, true);
        dialog.GetPage()->PressKey(kKeyReturn);
        EXPECT_TRUE(dialog.IsClosed());
        EXPECT_EQ(this->notes.Take(), "1");
        first.Destroy();
    });
    EXPECT_EQ(result, kDialogAccepted);
    this->Run([&](auto& dialog) {
        ASSERT_TRUE(first.CreatePage(this->notes, this->window->GetInside(), kBox));
        first.ShowPage(true);
        first.FocusFirstControl();
        dialog.GetPage()->PressKey(kKeyEscape);
        EXPECT_EQ(this->notes.Take(), "2");
        first.Destroy();
    });
}

TYPED_TEST_P(DialogKitConformance, TimersGoOnUntilTheyAreStopped) {
    this->Run([&](auto& dialog) {
        const int stopped = this->window->StartTimer(30);
        EXPECT_NE(this->window->StartTimer(30), stopped);
        this->window->StopTimer(stopped);
        this->window->StopTimer(4711);
        dialog.Elapse(200);
        EXPECT_EQ(this->notes.Take(), "timer") << "it stops itself";
    });
}

TYPED_TEST_P(DialogKitConformance, BoxesMenusAndDialogsStandOverADialog) {
    using namespace conformance;
    const std::pair<unsigned, int> rows[] = {{kBoxOk | kBoxError, kAnswerOk},
                                             {kBoxOkCancel | kBoxQuestion, kAnswerOk},
                                             {kBoxOkCancel, kAnswerCancel},
                                             {kBoxYesNo | kBoxWarning, kAnswerYes},
                                             {kBoxYesNo | kBoxInformation, kAnswerNo}};
    VPopupMenu inner;
    inner.Add(5, u"字母(&A)"_v);
    VPopupMenu menu;
    menu.Add(1, u"剪切(&T)\tCtrl+X"_v);
    menu.AddSeparator();
    menu.AddSubMenu(u"布局列表(&A)"_v, inner);
    menu.Check(5, true);
    this->Run([&](auto&) {
        for (const auto& [flags, answer] : rows) {
            this->kit.ExpectBox(u"<b>删除</b>?\r\n&"_v, answer);
            EXPECT_EQ(this->kit.ShowMessageBox(&this->notes, u"NorHalden"_v, u"<b>删除</b>?\r\n&"_v, flags), answer);
        }
        for (const int command : {1, 5, 0}) {
            this->kit.ExpectMenu([&](const VPopupMenu&) { return command; });
            EXPECT_EQ(this->kit.TrackPopupMenu(&this->notes, menu, {40, 40}), command);
        }
        Notes over(&this->notes);
        this->kit.ExpectDialog(kTemplate.id, [](auto& dialog) { dialog.Press(kIdOk); });
        EXPECT_EQ(over.DoModal(), kDialogAccepted);
        EXPECT_FALSE(this->notes.HasEnded());
    });
}

REGISTER_TYPED_TEST_SUITE_P(DialogKitConformance, WhatTheUserDoesWithControlsIsToldOnceAndWhatCodeDoesIsNot,
                            PasswordsLinesAndChoicesAreTheUsers,
                            WhatIsDisabledOrHiddenCannotBeUsedAndUnknownIdsAreHarmless,
                            KeysComeToTheDialogBeforeAControlSeesThem, APageLiesInADialogWhoseReturnAndEscapeItShares,
                            BoxesMenusAndDialogsStandOverADialog, TimersGoOnUntilTheyAreStopped);

}  // namespace connectdialog::test
