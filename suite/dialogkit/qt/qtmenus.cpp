#include "suite/dialogkit/qt/qtmenus.h"

#include <QMenu>
#include <QMenuBar>
#include <algorithm>

#include "suite/dialogkit/qt/qttext.h"

namespace connectdialog {

namespace {

using Entries = std::vector<VPopupMenu::Entry>;

bool HaveSameTexts(const Entries& left, const Entries& right) {
    return std::ranges::equal(left, right, [](const VPopupMenu::Entry& one, const VPopupMenu::Entry& other) {
        return one.command == other.command && one.isSubMenu == other.isSubMenu && one.text == other.text &&
               one.prompt == other.prompt && HaveSameTexts(one.children, other.children);
    });
}

void ShowState(QAction& action, const VPopupMenu::Entry& entry) {
    action.setEnabled(entry.isEnabled);
    action.setCheckable(entry.isChecked);
    action.setChecked(entry.isChecked);
}

/// Requires: the actions were made of entries with the same texts.
void ShowStates(const QList<QAction*>& actions, const Entries& entries) {
    for (qsizetype i = 0; i < actions.size(); ++i) {
        const VPopupMenu::Entry& entry = entries[static_cast<std::size_t>(i)];
        ShowState(*actions[i], entry);
        if (actions[i]->menu() != nullptr) ShowStates(actions[i]->menu()->actions(), entry.children);
    }
}

void AddEntry(QWidget& menu, const VPopupMenu::Entry& entry) {
    auto* action = new QAction(ToQt(entry.text), &menu);
    action->setData(entry.command);
    action->setStatusTip(ToQt(entry.prompt));
    ShowState(*action, entry);
    menu.addAction(action);
}

void AddMenu(QWidget& menu, const VPopupMenu::Entry& entry) {
    auto* inner = new QMenu(ToQt(entry.text), &menu);
    menu.addAction(inner->menuAction());
    inner->setEnabled(entry.isEnabled);
    FillMenu(*inner, entry.children);
}

}  // namespace

void RemoveActions(QWidget& bar) {
    for (QAction* action : bar.actions()) {
        bar.removeAction(action);
        if (action->menu() != nullptr)
            action->menu()->deleteLater();
        else
            action->deleteLater();
    }
}

void FillMenu(QMenu& menu, const Entries& entries) {
    for (const VPopupMenu::Entry& entry : entries) {
        if (entry.isSubMenu) {
            AddMenu(menu, entry);
        } else if (entry.command == 0) {
            menu.addSeparator();
        } else {
            AddEntry(menu, entry);
        }
    }
}

void ShowMenuBar(QMenuBar& bar, VPopupMenu& shown, const VPopupMenu& menu) {
    const bool isSame = HaveSameTexts(shown.GetEntries(), menu.GetEntries());
    shown = menu;
    if (isSame) return ShowStates(bar.actions(), menu.GetEntries());
    RemoveActions(bar);
    for (const VPopupMenu::Entry& entry : menu.GetEntries()) {
        if (entry.command != 0)
            AddEntry(bar, entry);
        else
            AddMenu(bar, entry);
    }
}

}  // namespace connectdialog
