// The user in front of real widgets: clicks, keys and drags that go the way of the window system's own. The names are
// those of the headless back end, so that one script plays in both.
#pragma once

#include <QObject>
#include <QTest>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "imports/dialogkit/treeview.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "qtinput.h"
#include "suite/dialogkit/qt/qtdialogkit.h"
#include "suite/dialogkit/qt/qtdialogwindow.h"
#include "suite/dialogkit/qt/qttext.h"
#include "suite/dialogkit/qt/qttree.h"

class QMenu;
class QMessageBox;
class QWidget;

namespace connectdialog::test {

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

    TreeItem Find(std::u16string_view path) const;
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

/// See HeadlessDialogKit.
class QtPlayedKit : public QObject, public QtDialogKit {
  public:
    using DialogScript = std::function<void(QtUserDialog& dialog)>;
    using MenuChoice = std::function<int(const VPopupMenu& menu)>;

    struct Box {
        VUnicodeString title;
        VUnicodeString text;
        unsigned flags = 0;
    };

    QtPlayedKit();
    ~QtPlayedKit() override;

    void ExpectDialog(int templateId, DialogScript script);
    /// The answer 0: closed by other means than a button.
    void ExpectBox(const VUnicodeString& text, int answer);
    void ExpectFolder(const char16_t* path);
    void ExpectMenu(MenuChoice choice);
    /// Called with the next box before it is answered.
    void BeforeBox(std::function<void(QWidget& box)> look) { lookAtBox = std::move(look); }
    const std::vector<Box>& GetBoxes() const { return boxes; }
    std::string TakeFaults();

    int ShowMessageBox(VWindow* parent, const VUnicodeString& title, const VUnicodeString& text,
                       unsigned flags) override;
    int TrackPopupMenu(VWindow* owner, const VPopupMenu& menu, VPoint point) override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    enum class Kind : std::uint8_t { kDialog, kBox, kFolder, kMenu };
    struct Expectation {
        Kind kind;
        int number = 0;
        VUnicodeString text;
        bool isGivenUp = false;
        DialogScript script;
        MenuChoice choice;
    };

    bool Take(Kind kind, const std::string& what, Expectation& taken);
    void Play(QWidget& shown);
    void PlayDialog(QtDialogFrame& frame);
    void PlayBox(QMessageBox& box);
    void PlayFolder(QWidget& dialog);
    void PlayMenu(QMenu& menu);

    std::deque<Expectation> expected;
    std::vector<Box> boxes;
    std::string faults;
    std::function<void(QWidget& box)> lookAtBox;
    const VPopupMenu* tracked = nullptr;
};

}  // namespace connectdialog::test
