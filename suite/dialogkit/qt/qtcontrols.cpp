#include "suite/dialogkit/qt/qtcontrols.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>
#include <limits>

#include "imports/dialogkit/vtoolbarstate.h"
#include "suite/dialogkit/qt/qtdialogframe.h"
#include "suite/dialogkit/qt/qtdialogkit.h"
#include "suite/dialogkit/qt/qticons.h"
#include "suite/dialogkit/qt/qtmenus.h"
#include "suite/dialogkit/qt/qttext.h"
#include "suite/dialogkit/qt/qttree.h"

namespace connectdialog {

namespace {

/// The system's pictures by their names in templates, with what is read aloud for them.
struct PictureRow {
    const char16_t* name;
    QStyle::StandardPixmap picture;
    const char16_t* spoken;
};

/// What a place may lose when its edges become whole pixels, and so may the text in it.
constexpr double kRounding = 1;

constexpr PictureRow kPictures[] = {
    {u"warning", QStyle::SP_MessageBoxWarning, u"警告"},
    {u"information", QStyle::SP_MessageBoxInformation, u"信息"},
    {u"question", QStyle::SP_MessageBoxQuestion, u"问题"},
    {u"error", QStyle::SP_MessageBoxCritical, u"错误"},
};

QWidget* MakeLabel(QtDialogFrame& frame) {
    auto* label = new QLabel(&frame);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setWordWrap(true);
    return label;
}

QWidget* MakeEdit(QtDialogFrame& frame) {
    auto* edit = new QLineEdit(&frame);
    edit->setMaxLength(std::numeric_limits<int>::max());
    return edit;
}

QWidget* MakePassword(QtDialogFrame& frame) {
    auto* edit = new QLineEdit(&frame);
    edit->setMaxLength(std::numeric_limits<int>::max());
    edit->setEchoMode(QLineEdit::Password);
    return edit;
}

QWidget* MakeMemo(QtDialogFrame& frame) {
    auto* memo = new QPlainTextEdit(&frame);
    memo->setTabChangesFocus(true);
    return memo;
}

QWidget* MakeButton(QtDialogFrame& frame, bool isDefault) {
    auto* button = new QPushButton(&frame);
    button->setDefault(isDefault);
    return button;
}

/// The heading's frame must not lie over the controls in it.
QWidget* MakeGroupBox(QtDialogFrame& frame) {
    auto* box = new QGroupBox(&frame);
    box->lower();
    return box;
}

QWidget* MakeLine(QtDialogFrame& frame) {
    auto* line = new QFrame(&frame);
    line->setFrameStyle(static_cast<int>(QFrame::HLine) | static_cast<int>(QFrame::Sunken));
    return line;
}

void ShowPicture(QLabel& label, const QString& name) {
    for (const PictureRow& row : kPictures) {
        if (name != QString::fromUtf16(row.name)) continue;
        ShowIcon(label, label.style()->standardIcon(row.picture, nullptr, &label));
        label.setAccessibleName(QString::fromUtf16(row.spoken));
    }
}

constexpr char kLabel[] = "label";

bool HasSameButtons(const QToolBar& bar, const VToolbarState& state) {
    const auto same = [](const QAction* action, const VToolbarState::Button& button) {
        return action->data().toInt() == button.command && action->text() == ToQt(button.tip) &&
               action->property(kLabel).toString() == ToQt(button.text);
    };
    const QList<QAction*> actions = bar.actions();
    const auto buttons = state.GetButtons();
    return std::equal(actions.begin(), actions.end(), buttons.begin(), buttons.end(), same);
}

/// A button without a picture has words in its place.
void ShowButtonText(QToolBar& bar, QAction& action, const QString& label) {
    action.setProperty(kLabel, label);
    if (label.isEmpty() && !action.icon().isNull()) return;
    if (!label.isEmpty()) action.setIconText(QString(label).replace(u'&', QLatin1String("&&")));
    if (auto* button = qobject_cast<QToolButton*>(bar.widgetForAction(&action)))
        button->setToolButtonStyle(action.icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonTextBesideIcon);
}

QIcon PictureOf(const VToolbarState::Button& button) {
    const auto* const image = dynamic_cast<const QtIcon*>(button.image.get());
    if (image != nullptr) return image->GetIcon();
    return CommandIcon(button.picture != 0 ? button.picture : button.command);
}

void MakeButtons(QToolBar& bar, const VToolbarState& state, const QObject& listener,
                 const std::function<void(int command)>& tell) {
    RemoveActions(bar);
    for (const VToolbarState::Button& button : state.GetButtons()) {
        if (button.command == 0) {
            bar.addSeparator()->setData(0);
            continue;
        }
        QAction* action = bar.addAction(PictureOf(button), ToQt(button.tip));
        action->setData(button.command);
        action->setToolTip(MakeTip(ToQt(button.tip)));
        action->setStatusTip(ToQt(button.prompt));
        const int command = button.command;
        QObject::connect(action, &QAction::triggered, &listener, [tell, command] { tell(command); });
        ShowButtonText(bar, *action, ToQt(button.text));
    }
}

}  // namespace

QWidget* MakeControlWidget(ControlKind kind, QtDialogFrame& frame) {
    switch (kind) {
        case ControlKind::kStatic:
            return MakeLabel(frame);
        case ControlKind::kIcon:
            return new QLabel(&frame);
        case ControlKind::kEdit:
            return MakeEdit(frame);
        case ControlKind::kPassword:
            return MakePassword(frame);
        case ControlKind::kMemo:
            return MakeMemo(frame);
        case ControlKind::kComboBox:
            return new QComboBox(&frame);
        case ControlKind::kButton:
        case ControlKind::kDefaultButton:
            return MakeButton(frame, kind == ControlKind::kDefaultButton);
        case ControlKind::kCheckBox:
            return new QCheckBox(&frame);
        case ControlKind::kGroupBox:
            return MakeGroupBox(frame);
        case ControlKind::kSeparator:
            return MakeLine(frame);
        case ControlKind::kTree:
            return new QtTree(frame);
        case ControlKind::kToolbar:
            break;
    }
    return new QWidget(&frame);
}

void ShowLabel(ControlKind kind, QWidget& widget, const QString& label) {
    if (kind == ControlKind::kSeparator) return;
    if (auto* text = qobject_cast<QLabel*>(&widget)) {
        if (kind == ControlKind::kIcon) return ShowPicture(*text, label);
        // A label without a buddy shows every "&".
        text->setText(text->buddy() != nullptr ? label : WithoutMnemonic(label));
    }
    if (auto* button = qobject_cast<QAbstractButton*>(&widget)) button->setText(label);
    if (auto* box = qobject_cast<QGroupBox*>(&widget)) box->setTitle(label);
}

void ShowIcon(QLabel& label, const QIcon& icon) {
    const int size = label.style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, &label);
    const QPixmap picture = icon.pixmap(size);
    if (!picture.isNull()) label.setPixmap(picture);
}

QString GetInput(const QWidget& widget) {
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) return edit->text();
    if (const auto* memo = qobject_cast<const QPlainTextEdit*>(&widget)) return memo->toPlainText();
    const auto* box = qobject_cast<const QComboBox*>(&widget);
    return box != nullptr ? box->currentText() : QString();
}

void SetInput(QWidget& widget, const QString& text) {
    const QSignalBlocker quiet(widget);
    WipeInput(widget);
    if (auto* edit = qobject_cast<QLineEdit*>(&widget)) edit->setText(text);
    if (auto* memo = qobject_cast<QPlainTextEdit*>(&widget)) memo->setPlainText(text);
    if (auto* box = qobject_cast<QComboBox*>(&widget)) box->setCurrentIndex(box->findText(text));
}

void WatchInput(QWidget& widget, const QObject& listener, const std::function<void()>& tell) {
    if (auto* edit = qobject_cast<QLineEdit*>(&widget)) QObject::connect(edit, &QLineEdit::textEdited, &listener, tell);
    if (auto* memo = qobject_cast<QPlainTextEdit*>(&widget))
        QObject::connect(memo, &QPlainTextEdit::textChanged, &listener, tell);
    if (auto* box = qobject_cast<QComboBox*>(&widget))
        QObject::connect(box, &QComboBox::currentIndexChanged, &listener, tell);
}

void WipeInput(QWidget& widget) {
    auto* edit = qobject_cast<QLineEdit*>(&widget);
    if (edit == nullptr || edit->echoMode() != QLineEdit::Password) return;
    // The toolkit frees a text without wiping it; this handle and the edit control share one buffer.
    const QString text = edit->text();
    auto* characters = const_cast<QChar*>(text.constData());
    std::fill(characters, characters + text.size(), QChar(u' '));
}

QSize NeededSize(ControlKind kind, const QWidget& widget) {
    switch (kind) {
        case ControlKind::kEdit:
        case ControlKind::kPassword:
        case ControlKind::kComboBox:
            return {0, widget.sizeHint().height()};
        case ControlKind::kIcon:
        case ControlKind::kButton:
        case ControlKind::kDefaultButton:
            return widget.sizeHint();
        case ControlKind::kCheckBox: {
            // Without the room that styles leave above and below.
            const int box = widget.style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, &widget);
            return {widget.sizeHint().width(), std::max(box, widget.fontMetrics().height())};
        }
        default:
            return {0, 0};
    }
}

QSizeF AverageCharacter(const QWidget& widget) {
    const QFontMetricsF metrics(widget.font());
    const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    // A line of a label stands in nine units, also one in a script that is taller than the font itself.
    const double line = metrics.boundingRect(QRectF(0, 0, 999, 999), 0, QStringLiteral("会g")).height();
    return {metrics.horizontalAdvance(letters) / static_cast<double>(letters.size()),
            std::max(metrics.height(), (line + kRounding) * 8 / 9)};
}

QToolBar* MakeToolBar(QWidget& window) {
    auto* bar = new QToolBar(&window);
    const int size = bar->style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, bar);
    bar->setIconSize({size, size});
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    return bar;
}

void FillToolBar(QToolBar& bar, const VToolbarState& state, const QObject& listener,
                 const std::function<void(int command)>& tell) {
    if (!HasSameButtons(bar, state)) MakeButtons(bar, state, listener, tell);
    const QList<QAction*> actions = bar.actions();
    for (qsizetype i = 0; i < actions.size(); ++i)
        actions[i]->setEnabled(state.GetButtons()[static_cast<std::size_t>(i)].isEnabled);
}

}  // namespace connectdialog
