#include "suite/dialogkit/qt/qtdialogkit.h"

#include <QAccessible>
#include <QApplication>
#include <QMetaEnum>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <gtest/gtest.h>
#include <map>
#include <vector>

#include "keymap/extendedkeytable.h"
#include "layoutcheck.h"
#include "platform/codepage.h"
#include "platform/paths.h"
#include "qtuser.h"
#include "resources/dialogids.h"
#include "suite/configpanels/firewallprompt.h"
#include "suite/dialogkit/qt/qtdialogwindow.h"
#include "suite/dialogkit/qt/qttext.h"
#include "support/treeconformance.h"

namespace connectdialog::test {

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, DialogKitConformance, QtBackEnd);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, TreeConformance, QtBackEnd);

namespace {

using namespace conformance;

using QtDialogs = DialogKitConformance<QtBackEnd>;

struct NoEvents : IDialogEvents {
    void OnCommandEvent(int) override {}
    void OnTextChanged(int) override {}
    bool OnKeyEvent(std::uint16_t, KeyModifiers) override { return false; }
    void OnTimer(int) override {}
    void OnSize(std::int32_t, std::int32_t) override {}
    void OnWindowGone() override {}
};

TEST_F(QtDialogs, LettersOfLabelsLeadToTheirControlsUnlessTheDialogTakesTheKey) {
    Run([&](QtUserDialog& dialog) {
        dialog.PressKey(u'H', Accelerator::kAlt);
        dialog.PressKey(u'H', Accelerator::kAlt);
        dialog.PressKey(u'T', Accelerator::kAlt);
        EXPECT_EQ(notes.Take(), "12+ 12 14");
        dialog.PressKey(u'N', Accelerator::kAlt);
        EXPECT_EQ(dialog.GetFocus(), kEdit) << "a label leads to the control behind it";
        notes.GetWindow()->SetText(kOther, u"(&C)"_v);
        dialog.PressKey(u'C', Accelerator::kAlt);
        EXPECT_EQ(notes.Take(), "79") << "an accelerator comes first";
        notes.EnableControl(kBox, false);
        dialog.PressKey(u'H', Accelerator::kAlt);
        EXPECT_EQ(notes.Take(), "");
    });
}

TEST_F(QtDialogs, TheTabKeyWalksTheControlsInTheirOrder) {
    Run([&](QtUserDialog& dialog) {
        std::vector<int> walked;
        for (int i = 0; i < 7; ++i) {
            walked.push_back(dialog.GetFocus());
            dialog.PressKey(kKeyTab);
        }
        EXPECT_EQ(walked, (std::vector{kEdit, kBox, kTree, kIdOk, kOther, kIdCancel, kEdit}));
        notes.FocusControl(kOther);
        dialog.PressKey(kKeySpace);
        EXPECT_EQ(notes.Take(), "14");

        Page page(notes);
        ASSERT_TRUE(page.CreatePage(notes, {0, 0, 1, 1}, kBox));
        page.ShowPage(true);
        notes.FocusControl(kBox);
        for (const int next : {kPageEdit, kPageBox}) {
            dialog.PressKey(kKeyTab);
            EXPECT_EQ(dialog.GetPage()->GetFocus(), next);
        }
        dialog.PressKey(kKeyTab);
        EXPECT_EQ(dialog.GetFocus(), kTree);
        dialog.PressKey(u'S', Accelerator::kAlt);
        EXPECT_EQ(dialog.GetPage()->GetFocus(), kPageEdit) << "a letter of the page";
        dialog.PressKey(u'T', Accelerator::kAlt);
        EXPECT_EQ(notes.Take(), "14") << "and one of the dialog";
        page.Destroy();
    });
}

TEST_F(QtDialogs, EveryControlHasANameThatIsReadAloud) {
    VToolbarState bar;
    bar.Add(2000, u"连接"_v);
    Run([&](QtUserDialog& dialog) {
        notes.GetWindow()->ShowToolbar(kBar, bar);
        const auto nameOf = [&](QObject* widget) {
            return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).toStdString();
        };
        EXPECT_EQ(nameOf(dialog.GetControl(kEdit)), "名称");
        EXPECT_EQ(nameOf(dialog.GetControl(kBox)), "主机名");
        EXPECT_EQ(nameOf(dialog.GetControl(kIdOk)), "确定");
        notes.SetControlText(kLabel, u"主机(&N):"_v);
        EXPECT_EQ(nameOf(dialog.GetControl(kEdit)), "主机");
        for (QWidget* control : dialog.GetFrame().findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
            EXPECT_NE(nameOf(control), "") << control->objectName().toStdString();
        auto* toolBar = dynamic_cast<QToolBar*>(dialog.GetControl(kBar));
        EXPECT_EQ(nameOf(toolBar->widgetForAction(toolBar->actions().first())), "连接");
    });
}

TEST_F(QtDialogs, NoTemplateHasTextsCutOffOrControlsOnEachOther) {
    NoEvents quiet;
    std::vector<DialogTemplate> templates(GetDialogTemplates().begin(), GetDialogTemplates().end());
    templates.insert(templates.end(), GetFirewallPromptTemplates().begin(), GetFirewallPromptTemplates().end());
    ASSERT_FALSE(templates.empty());
    for (const DialogTemplate& dialogTemplate : templates) {
        const QtDialogWindow window(dialogTemplate, quiet, nullptr);
        CheckLayout(*window.GetWidget(), std::to_string(dialogTemplate.id));
    }
}

TEST_F(QtDialogs, ClosingABoxIsTheHarmlessAnswer) {
    for (const auto& [flags, answer] :
         {std::pair{kBoxOk, kAnswerOk}, std::pair{kBoxOkCancel, kAnswerCancel}, std::pair{kBoxYesNo, kAnswerNo}}) {
        kit.ExpectBox(u"text"_v, 0);
        EXPECT_EQ(VMessageBox(nullptr, u"text"_v, flags), answer);
    }
}

TEST_F(QtDialogs, AFolderIsChosenOrGivenUp) {
    const QTemporaryDir folder;
    const std::u16string chosen = platform::FromNativePath(folder.path().toStdString());
    VUnicodeString path = u"\\tmp"_v;
    kit.ExpectFolder(nullptr);
    EXPECT_FALSE(kit.BrowseForFolder(nullptr, u"title"_v, path));
    EXPECT_EQ(path, u"\\tmp");
    kit.ExpectFolder(chosen.c_str());
    EXPECT_TRUE(kit.BrowseForFolder(nullptr, u"title"_v, path));
    EXPECT_EQ(path, chosen.c_str());
}

TEST_F(QtDialogs, ADialogThatGoesWithTheWindowUnderItTellsItsEndOnce) {
    auto host = std::make_unique<QWidget>();
    QtWindow window(*host);
    Notes over(&window);
    ASSERT_TRUE(over.Create());
    over.SetControlText(kEdit, u"kept"_v);
    host.reset();
    EXPECT_TRUE(over.HasEnded());
    EXPECT_EQ(over.GetControlText(kEdit), u"");
    over.SetControlText(kEdit, u"x"_v);
    over.FocusControl(kTree);
    over.GetWindow()->StartTimer(1);
    over.GetWindow()->Close();
    over.Destroy();
}

/// "VK_DEAD_ACUTE" and "Key_Dead_Acute" are one name.
std::string PlainName(const std::string& name, std::size_t prefix) {
    std::string plain;
    for (const char c : name.substr(prefix))
        if (c != '_' && c != ' ') plain += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return plain;
}

TEST(ExtendedKeys, HaveTheNumbersOfTheToolkitsKeysOfTheirNames) {
    const QMetaEnum keys = QMetaEnum::fromType<Qt::Key>();
    std::map<std::string, std::uint32_t> numbers;
    for (int i = 0; i < keys.keyCount(); ++i)
        numbers[PlainName(keys.key(i), 4)] = static_cast<std::uint32_t>(keys.value(i));
    constexpr std::uint32_t kCharacterBit = 0x80000000;
    constexpr std::uint32_t kFirstBehindVirtualKeys = 0x100;
    std::string faults;
    std::string virtualKeys;
    for (const KeyRow& row : kExtendedKeys) {
        const std::string name = platform::ToNarrow(row.name);
        const auto found = numbers.find(PlainName(name, 3));
        if (row.code < kFirstBehindVirtualKeys)
            virtualKeys += name + " ";
        else if (found == numbers.end() || (row.code & ~kCharacterBit) != found->second)
            faults += name + " ";
    }
    EXPECT_EQ(faults, "");
    EXPECT_EQ(virtualKeys, "VK_BACK VK_NUMLOCK VK_YDIAERESIS ") << "they have virtual keys' numbers";
}

}  // namespace
}  // namespace connectdialog::test
