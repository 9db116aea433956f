// The user in front of real widgets: clicks, keys and drags that go the way of the window system's own. The names are
// those of the headless back end, so that one script plays in both.
#pragma once

#include <QGuiApplication>
#include <QObject>
#include <QTest>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "imports/dialogkit/treeview.h"
#include "suite/dialogkit/headless/expectations.h"
#include "suite/dialogkit/headless/treereading.h"
#include "suite/dialogkit/qt/qtdialogkit.h"
#include "suite/dialogkit/qt/qtdialogwindow.h"
#include "suite/dialogkit/qt/qttext.h"
#include "suite/dialogkit/qt/qttree.h"

class QMenu;
class QMessageBox;
class QWidget;

namespace connectdialog::test {

// What a user's hands send to widgets, by way of the window system where that is possible.
// Points are pixels of the widget.

void ClickWidget(QWidget& widget, QPoint point, KeyModifiers modifiers = 0, Qt::MouseButton button = Qt::LeftButton);
void DoubleClickWidget(QWidget& widget, QPoint point);
/// To whatever has the focus in the window. The key is a virtual one.
void SendKey(QWidget& window, std::uint16_t key, KeyModifiers modifiers);
/// Replaces the text, by keys where they exist, else as an input method does.
/// Requires: an edit control or a memo.
void TypeInto(QWidget& edit, const QString& text);
/// The pointer rests there for as long as tips take.
void RestPointer(QWidget& widget, QPoint point);

/// Presses the left button and pulls; `play` runs while a drag does, or when none came of it.
void PullWidget(QWidget& widget, QPoint point, const std::function<void()>& play);
void MoveDrag(QWidget& widget, QPoint point, KeyModifiers modifiers);
void LetGo(QWidget& widget, QPoint point, KeyModifiers modifiers);

class QtUserTree;

/// See HeadlessDrag.
class QtUserDrag {
  public:
    explicit QtUserDrag(QtTree& tree) : tree(tree) {}

    DropEffect MoveTo(VPoint point, KeyModifiers modifiers = 0);
    void Wait(unsigned milliseconds) { QTest::qWait(static_cast<int>(milliseconds)); }
    void Leave();
    /// True when something would be dropped there.
    bool Drop();
    DropEffect GetEffect() const { return tree.GetDropEffect(); }
    /// Gives up what the script did not end.
    void Finish();

  private:
    QtTree& tree;
    VPoint point;
    KeyModifiers modifiers = 0;
    bool isInside = false;
    bool isOver = false;
};

/// See HeadlessTree.
class QtUserTree {
  public:
    using DragScript = std::function<void(QtUserDrag& drag)>;

    explicit QtUserTree(QtTree& tree) : tree(&tree) {}

    bool Click(TreeItem item, KeyModifiers modifiers = 0);
    bool RightClick(TreeItem item);
    bool DoubleClick(TreeItem item);
    bool ClickExpander(TreeItem item);
    void ClickAt(VPoint point, KeyModifiers modifiers = 0) { ClickWidget(*tree->viewport(), ToQt(point), modifiers); }
    bool PressKey(std::uint16_t key, KeyModifiers modifiers = 0);
    bool TypeLabel(const VUnicodeString& text);
    bool CancelLabel();
    bool Drag(TreeItem item, const DragScript& script);

    TreeItem Find(std::u16string_view path) const { return FindItemByPath(*tree->GetItems(), path); }
    std::string Read() const;
    VPoint PointOn(TreeItem item, std::int32_t dy = -1) const;
    VUnicodeString GetTip(TreeItem item) const;
    bool IsEditing() const { return tree->GetEditor() != nullptr; }
    TreeItem GetEdited() const { return tree->GetEdited(); }
    VUnicodeString GetEditText() const;
    QtTree& GetWidget() const { return *tree; }

  private:
    QtTree* tree;
};

/// See HeadlessDialog.
class QtUserDialog {
  public:
    explicit QtUserDialog(QtDialogFrame& frame);

    bool Type(int id, const VUnicodeString& text);
    bool Pick(int id, const VUnicodeString& text);
    bool Tick(int id, bool isChecked);
    bool Press(int id);
    bool PressLabelled(const VUnicodeString& label);
    bool PressKey(std::uint16_t key, KeyModifiers modifiers = 0);
    bool CloseByFrame();
    void Elapse(unsigned milliseconds) { QTest::qWait(static_cast<int>(milliseconds)); }
    bool Resize(std::int32_t width, std::int32_t height);

    int GetTemplateId() const { return window.GetTemplateId(); }
    VUnicodeString GetTitle() const { return FromQt(frame.windowTitle()); }
    int GetFocus() const { return window.GetFocus(); }
    bool IsClosed() const;
    VUnicodeString GetText(int id) const { return window.GetText(id); }
    bool IsChecked(int id) const { return window.IsChecked(id); }
    bool IsEnabled(int id) const { return window.IsEnabled(id); }
    bool IsShown(int id) const { return window.IsShown(id); }
    QtUserTree* GetTree(int id);
    QtUserDialog* GetPage();
    QtDialogFrame& GetFrame() const { return frame; }
    QWidget* GetControl(int id) const { return window.GetControl(id); }

  private:
    /// The control when the user can use it; null once the dialog is closed.
    QWidget* FindUsable(int id) const;

    QtDialogFrame& frame;
    QtDialogWindow& window;
    std::vector<std::pair<int, QtUserTree>> trees;
    std::unique_ptr<QtUserDialog> page;
};

/// See HeadlessDialogKit. A box whose answer is 0 is closed by other means than a button.
class QtPlayedKit : public QObject, public QtDialogKit, public UserExpectations<QtUserDialog> {
  public:
    QtPlayedKit();
    ~QtPlayedKit() override;

    /// Called with the next box before it is answered.
    void BeforeBox(std::function<void(QWidget& box)> look) { lookAtBox = std::move(look); }

    int ShowMessageBox(VWindow* parent, const VUnicodeString& title, const VUnicodeString& text,
                       unsigned flags) override;
    int TrackPopupMenu(VWindow* owner, const VPopupMenu& menu, VPoint point) override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Play(QWidget& shown);
    void PlayDialog(QtDialogFrame& frame);
    void PlayBox(QMessageBox& box);
    void PlayFolder(QWidget& dialog);
    void PlayMenu(QMenu& menu);

    std::function<void(QWidget& box)> lookAtBox;
    const VPopupMenu* tracked = nullptr;
};

/// What takes part in the conformance of back ends.
struct QtBackEnd {
    using Kit = QtPlayedKit;
    using Dialog = QtUserDialog;
    using Tree = QtUserTree;
    static bool CanDrag() { return QGuiApplication::platformName() != QStringLiteral("offscreen"); }
};

}  // namespace connectdialog::test
