// The back end of the dialogs that shows them as windows of the desktop.
#pragma once

#include <QIcon>
#include <utility>

#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vicon.h"
#include "imports/dialogkit/vwindow.h"

class QWidget;

namespace connectdialog {

/// The icon of the host's windows.
class QtIcon : public VIcon {
  public:
    explicit QtIcon(QIcon icon) : icon(std::move(icon)) {}
    const QIcon& GetIcon() const { return icon; }

  private:
    QIcon icon;
};

/// A window of the host's over which dialogs can stand. Requires: it outlives this.
class QtWindow : public VWindow {
  public:
    explicit QtWindow(QWidget& widget) : widget(widget) {}
    QWidget& GetWidget() const { return widget; }

  private:
    QWidget& widget;
};

/// Points and sizes are pixels that the desktop's scale factor enlarges. Requires: the host's QApplication exists and
/// outlives it; all calls come from the application's thread.
class QtDialogKit : public IDialogKit {
  public:
    /// Becomes the installed back end for as long as it lives.
    QtDialogKit();
    ~QtDialogKit() override;

    std::unique_ptr<IDialogWindow> CreateDialogWindow(const DialogTemplate& dialog, IDialogEvents& events,
                                                      VWindow* parent) override;
    std::unique_ptr<IFrameWindow> CreateFrameWindow(IFrameEvents& events) override;
    int ShowMessageBox(VWindow* parent, const VUnicodeString& title, const VUnicodeString& text,
                       unsigned flags) override;
    bool BrowseForFolder(VWindow* owner, const VUnicodeString& title, VUnicodeString& path) override;
    int TrackPopupMenu(VWindow* owner, const VPopupMenu& menu, VPoint point) override;
    bool SetClipboardData(const VUnicodeString& format, std::span<const std::byte> data) override;
    bool GetClipboardData(const VUnicodeString& format, std::vector<std::byte>& data) override;
    void ShowWaitCursor(bool isShown) override;

  private:
    int waitCursors = 0;
};

}  // namespace connectdialog
