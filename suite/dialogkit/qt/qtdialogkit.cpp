#include "suite/dialogkit/qt/qtdialogkit.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <memory>

#include "imports/dialogkit/vdialog.h"
#include "imports/dialogkit/vmessagebox.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "imports/dialogkit/windowclass.h"
#include "platform/paths.h"
#include "suite/dialogkit/qt/qtdialogwindow.h"
#include "suite/dialogkit/qt/qtframewindow.h"
#include "suite/dialogkit/qt/qtmenus.h"
#include "suite/dialogkit/qt/qtmimedata.h"
#include "suite/dialogkit/qt/qttext.h"
#include "suite/dialogkit/qt/qttreeaccessible.h"

namespace connectdialog {

namespace {

constexpr unsigned kButtonsOfBox = 0x0F;
constexpr unsigned kPictureOfBox = 0xF0;

struct BoxButton {
    unsigned buttons;  ///< of which kind of box
    int answer;
    const char16_t* label;
    QMessageBox::ButtonRole role;
};

/// The first button of a box is the default one, the last one stands for closing the box.
constexpr BoxButton kBoxButtons[] = {
    {kBoxOk, kAnswerOk, u"确定", QMessageBox::AcceptRole},
    {kBoxOkCancel, kAnswerOk, u"确定", QMessageBox::AcceptRole},
    {kBoxOkCancel, kAnswerCancel, u"取消", QMessageBox::RejectRole},
    {kBoxYesNo, kAnswerYes, u"是(&Y)", QMessageBox::YesRole},
    {kBoxYesNo, kAnswerNo, u"否(&N)", QMessageBox::NoRole},
};

QMessageBox::Icon PictureOf(unsigned flags) {
    switch (flags & kPictureOfBox) {
        case kBoxError:
            return QMessageBox::Critical;
        case kBoxQuestion:
            return QMessageBox::Question;
        case kBoxWarning:
            return QMessageBox::Warning;
        case kBoxInformation:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

/// The widget of a window that is ours or that the host lent us, or null.
QWidget* WidgetOf(VWindow* window) {
    if (const auto* host = dynamic_cast<QtWindow*>(window)) return &host->GetWidget();
    if (const auto* frame = dynamic_cast<QtFrameWindow*>(window)) return &frame->GetWidget();
    const auto* dialog = dynamic_cast<VDialog*>(window);
    const auto* shown = dialog != nullptr ? dynamic_cast<QtDialogWindow*>(dialog->GetWindow()) : nullptr;
    return shown != nullptr ? shown->GetWidget() : nullptr;
}

}  // namespace

QtDialogKit::QtDialogKit() {
    LetTreesBeRead();
    InstallDialogKit(this);
}

QtDialogKit::~QtDialogKit() {
    if (GetDialogKit() == this) InstallDialogKit(nullptr);
}

std::unique_ptr<IDialogWindow> QtDialogKit::CreateDialogWindow(const DialogTemplate& dialog, IDialogEvents& events,
                                                               VWindow* parent) {
    auto window = std::make_unique<QtDialogWindow>(dialog, events, WidgetOf(parent));
    const WindowClass* known = FindWindowClass(dialog.windowClass);
    const auto* icon = known != nullptr ? dynamic_cast<const QtIcon*>(known->icon) : nullptr;
    if (icon != nullptr) window->GetWidget()->setWindowIcon(icon->GetIcon());
    return window;
}

std::unique_ptr<IFrameWindow> QtDialogKit::CreateFrameWindow(IFrameEvents& events) {
    return std::make_unique<QtFrameWindow>(events);
}

int QtDialogKit::ShowMessageBox(VWindow* parent, const VUnicodeString& title, const VUnicodeString& text,
                                unsigned flags) {
    QString shown = ToQt(text);
    shown.remove(u'\r');
    QMessageBox box(PictureOf(flags), ToQt(title), shown, QMessageBox::NoButton, WidgetOf(parent));
    box.setTextFormat(Qt::PlainText);
    QAbstractButton* last = nullptr;
    for (const BoxButton& row : kBoxButtons) {
        if (row.buttons != (flags & kButtonsOfBox)) continue;
        QPushButton* button = box.addButton(QString::fromUtf16(row.label), row.role);
        button->setProperty("answer", row.answer);
        button->setAccessibleName(SpokenLabel(button->text()));
        if (last == nullptr) box.setDefaultButton(button);
        last = button;
    }
    box.setEscapeButton(last);
    box.exec();
    const QAbstractButton* clicked = box.clickedButton() != nullptr ? box.clickedButton() : last;
    return clicked != nullptr ? clicked->property("answer").toInt() : kAnswerCancel;
}

bool QtDialogKit::BrowseForFolder(VWindow* owner, const VUnicodeString& title, VUnicodeString& path) {
    const QString offered = QString::fromStdString(platform::ToNativePath(path));
    const QUrl chosen =
        QFileDialog::getExistingDirectoryUrl(WidgetOf(owner), ToQt(title), QUrl::fromLocalFile(offered));
    if (chosen.isEmpty()) return false;
    path = VUnicodeString();
    if (chosen.isLocalFile()) path = platform::FromNativePath(chosen.toLocalFile().toStdString());
    return true;
}

int QtDialogKit::TrackPopupMenu(VWindow* owner, const VPopupMenu& menu, VPoint point) {
    QMenu shown(WidgetOf(owner));
    FillMenu(shown, menu.GetEntries());
    const QAction* chosen = shown.exec(ToQt(point));
    return chosen != nullptr ? chosen->data().toInt() : 0;
}

bool QtDialogKit::SetClipboardData(const VUnicodeString& format, std::span<const std::byte> data) {
    QClipboard& clipboard = *QGuiApplication::clipboard();
    clipboard.setMimeData(MakeMimeData(format, data).release());
    // The toolkit tells no failure; what was not taken cannot be read back.
    std::vector<std::byte> taken;
    return GetClipboardData(format, taken) && std::equal(taken.begin(), taken.end(), data.begin(), data.end());
}

bool QtDialogKit::GetClipboardData(const VUnicodeString& format, std::vector<std::byte>& data) {
    const QMimeData* held = QGuiApplication::clipboard()->mimeData();
    return ReadMimeData(held, format, data);
}

void QtDialogKit::ShowWaitCursor(bool isShown) {
    waitCursors += isShown ? 1 : -1;
    if (isShown && waitCursors == 1) QApplication::setOverrideCursor(Qt::WaitCursor);
    if (!isShown && waitCursors == 0) QApplication::restoreOverrideCursor();
}

}  // namespace connectdialog
