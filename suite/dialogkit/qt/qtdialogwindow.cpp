#include "suite/dialogkit/qt/qtdialogwindow.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QToolBar>
#include <algorithm>
#include <limits>

#include "imports/dialogkit/vtoolbarstate.h"
#include "suite/dialogkit/qt/qtcontrols.h"
#include "suite/dialogkit/qt/qtdialogkit.h"
#include "suite/dialogkit/qt/qticons.h"
#include "suite/dialogkit/qt/qttext.h"
#include "suite/dialogkit/qt/qttree.h"

namespace connectdialog {

QtDialogWindow::QtDialogWindow(const DialogTemplate& dialog, IDialogEvents& events, QWidget* parent)
    : dialog(dialog), frame(new QtDialogFrame(*this, events, parent)) {
    MakeControls();
    frame->installEventFilter(frame);
    MeasureUnits();
    PlaceControls();
    const VRectangle inside = ToPixels({0, 0, dialog.width, dialog.height});
    frame->setFixedSize(inside.right, inside.bottom);
    SetInside(inside.right, inside.bottom);
    const auto first =
        std::find_if(controls.begin(), controls.end(), [](const Control& c) { return TakesFocus(c.kind); });
    if (first != controls.end()) SetFocus(first->id);
}

QtDialogWindow::QtDialogWindow(const DialogTemplate& dialog, IDialogEvents& events, QtDialogWindow& owner,
                               const VRectangle& place)
    : dialog(dialog),
      owner(&owner),
      frame(new QtDialogFrame(*this, events, owner.frame)),
      unitAcross(owner.unitAcross),
      unitDown(owner.unitDown) {
    owner.pages.push_back(this);
    frame->setWindowFlags(Qt::Widget);
    frame->hide();  // else it would show together with the dialog
    MakeControls();
    PlaceControls();
    frame->ExpectSize(ToQt(place).size());
    frame->setGeometry(ToQt(place));
}

QtDialogWindow::~QtDialogWindow() {
    if (owner != nullptr) std::erase(owner->pages, this);
    if (frame == nullptr) return;
    for (const Control& control : controls)
        if (control.kind == ControlKind::kTree)
            static_cast<QtTree*>(control.widget.data())->Detach();
        else if (control.kind == ControlKind::kPassword)
            WipeInput(*control.widget);
    frame->GiveUp();
}

void QtDialogWindow::MakeControls() {
    frame->setWindowTitle(QString::fromUtf16(dialog.title));
    for (const ControlTemplate& row : dialog.controls) {
        controls.push_back({row.kind, row.id, MakeControl(row), QString()});
        SetLabel(controls.back(), QString::fromUtf16(row.label));
    }
    ChainControls(nullptr);
    NameForReading();
    const auto isDefault = [](const Control& control) { return control.kind == ControlKind::kDefaultButton; };
    if (std::any_of(controls.begin(), controls.end(), isDefault)) return;
    // The toolkit would draw the first of the buttons as the one that the Return key presses.
    for (auto* button : frame->findChildren<QPushButton*>()) button->setAutoDefault(false);
}

QWidget* QtDialogWindow::MakeControl(const ControlTemplate& row) {
    QtDialogFrame* const told = frame;
    const int id = row.id;
    QWidget* const widget = MakeControlWidget(row.kind, *told);
    if (HoldsInput(row.kind)) WatchInput(*widget, *told, [told, id] { told->TellText(id); });
    if (auto* button = qobject_cast<QAbstractButton*>(widget))
        QObject::connect(button, &QAbstractButton::clicked, told, [told, id] { told->TellCommand(id); });
    widget->setObjectName(QString::number(id));
    widget->installEventFilter(told);
    return widget;
}

void QtDialogWindow::PlaceControls() {
    for (std::size_t i = 0; i < controls.size(); ++i)
        controls[i].widget->setGeometry(ToQt(ToPixels(dialog.controls[i].place)));
}

QWidget* QtDialogWindow::ChainControls(QWidget* previous) const {
    for (const Control& control : controls) {
        if (control.widget == nullptr || !TakesFocus(control.kind)) continue;
        if (previous != nullptr) QWidget::setTabOrder(previous, control.widget);
        previous = control.widget;
    }
    return previous;
}

void QtDialogWindow::MeasureUnits() {
    const QSizeF unit = AverageCharacter(*frame);
    unitAcross = unit.width() / 4;
    unitDown = unit.height() / 8;
    // The desktop's style may draw its controls larger than the template foresaw: all grows with what needs it most.
    for (std::size_t i = 0; i < controls.size(); ++i) {
        const DialogRectangle& place = dialog.controls[i].place;
        const QSize needed = NeededSize(controls[i].kind, *controls[i].widget);
        if (place.width > 0) unitAcross = std::max(unitAcross, double(needed.width()) / place.width);
        if (place.height > 0) unitDown = std::max(unitDown, double(needed.height()) / place.height);
    }
}

VRectangle QtDialogWindow::ToPixels(const DialogRectangle& place) const {
    const auto across = [this](int units) { return qRound(units * unitAcross); };
    const auto down = [this](int units) { return qRound(units * unitDown); };
    return {across(place.x), down(place.y), across(place.x + place.width), down(place.y + place.height)};
}

void QtDialogWindow::NameForReading() {
    QStringList before;  // the labels that stand before a control without a label of its own
    for (Control& control : controls) {
        const bool isMute = control.kind == ControlKind::kIcon || control.kind == ControlKind::kSeparator;
        if (control.widget == nullptr || isMute) continue;
        const QString name = SpokenLabel(control.label);
        if (control.kind == ControlKind::kStatic) {
            before += name;
            SetBuddy(control);
            continue;
        }
        const bool hasLabel = !HoldsInput(control.kind) && control.kind != ControlKind::kTree;
        const QString spoken = hasLabel ? name : before.join(u' ');
        control.widget->setAccessibleName(spoken.isEmpty() ? frame->windowTitle() : spoken);
        before.clear();
    }
}

void QtDialogWindow::SetBuddy(Control& label) {
    const Control* buddy = MnemonicOf(label.label).isNull() ? nullptr : FindFollowing(label);
    static_cast<QLabel*>(label.widget.data())->setBuddy(buddy != nullptr ? buddy->widget.data() : nullptr);
    ShowLabel(label.kind, *label.widget, label.label);
}

QWidget* QtDialogWindow::GetControl(int id) const {
    if (id == kNoId) return nullptr;
    const auto found = std::find_if(controls.begin(), controls.end(), [&](const Control& c) { return c.id == id; });
    if (found != controls.end()) return found->widget;
    return toolBar != nullptr && toolBar->objectName() == QString::number(id) ? toolBar.data() : nullptr;
}

QtDialogWindow::Control* QtDialogWindow::Find(int id) {
    if (id == kNoId) return nullptr;
    const auto found = std::find_if(controls.begin(), controls.end(), [&](const Control& c) { return c.id == id; });
    return found != controls.end() && found->widget != nullptr ? &*found : nullptr;
}

QtDialogWindow::Control* QtDialogWindow::FindFollowing(const Control& control) {
    for (auto i = static_cast<std::size_t>(&control - controls.data()); i < controls.size(); ++i) {
        const Control& next = controls[i];
        const bool isUsable = next.widget != nullptr && next.widget->isEnabled() && !next.widget->isHidden();
        if (TakesFocus(next.kind) && isUsable) return &controls[i];
    }
    return nullptr;
}

bool QtDialogWindow::IsInMemo() const {
    return qobject_cast<QPlainTextEdit*>(frame->focusWidget()) != nullptr;
}

void QtDialogWindow::PressReturn() {
    if (owner != nullptr) return owner->PressReturn();
    if (frame == nullptr) return;
    auto* button = qobject_cast<QPushButton*>(frame->focusWidget());
    for (const Control& control : controls)
        if (button == nullptr && control.kind == ControlKind::kDefaultButton)
            button = qobject_cast<QPushButton*>(control.widget.data());
    if (button != nullptr && !button->isHidden()) button->click();
}

void QtDialogWindow::FollowMnemonic(QChar letter) {
    QtDialogWindow* const other = owner != nullptr ? owner : GetPage();
    if (!Follow(letter) && other != nullptr) other->Follow(letter);
}

bool QtDialogWindow::Follow(QChar letter) {
    for (Control& control : controls) {
        if (control.widget == nullptr || control.widget->isHidden() || !control.widget->isEnabled()) continue;
        if (MnemonicOf(control.label) != letter) continue;
        Control* const target = TakesFocus(control.kind) ? &control : FindFollowing(control);
        if (target == nullptr) continue;
        Activate(*target);
        return true;
    }
    return false;
}

void QtDialogWindow::Activate(Control& control) {
    control.widget->setFocus(Qt::ShortcutFocusReason);
    if (auto* button = qobject_cast<QAbstractButton*>(control.widget.data())) button->click();
}

void QtDialogWindow::RunModal() {
    if (frame != nullptr) frame->exec();
}

void QtDialogWindow::ShowModeless() {
    if (frame != nullptr) frame->show();
}

void QtDialogWindow::Hide() {
    if (owner != nullptr && frame != nullptr) frame->hide();
}

void QtDialogWindow::Close() {
    if (frame == nullptr) return;
    for (const Control& control : controls)
        if (control.kind == ControlKind::kTree) static_cast<QtTree*>(control.widget.data())->GiveUpDrag();
    frame->done(QDialog::Accepted);
}

void QtDialogWindow::SetTitle(const VUnicodeString& title) {
    if (frame == nullptr) return;
    frame->setWindowTitle(ToQt(title));
    NameForReading();
}

VUnicodeString QtDialogWindow::GetText(int id) const {
    const auto found = std::find_if(controls.begin(), controls.end(), [&](const Control& c) { return c.id == id; });
    if (id == kNoId || found == controls.end()) return {};
    if (!HoldsInput(found->kind) || found->widget == nullptr) return FromQt(found->label);
    VUnicodeString text;
    if (found->kind == ControlKind::kPassword) text.MarkSensitive();
    text += ViewOf(GetInput(*found->widget));
    return text;
}

void QtDialogWindow::SetText(int id, const VUnicodeString& text) {
    Control* control = Find(id);
    if (control == nullptr) return;
    SetLabel(*control, ToQt(text));
    NameForReading();
}

void QtDialogWindow::SetChoices(int id, std::span<const VUnicodeString> choices) {
    auto* box = qobject_cast<QComboBox*>(GetControl(id));
    if (box == nullptr) return;
    const QSignalBlocker quiet(box);
    box->clear();
    for (const VUnicodeString& choice : choices) box->addItem(ToQt(choice));
    box->setCurrentIndex(-1);
}

void QtDialogWindow::SetLabel(Control& control, const QString& label) {
    if (HoldsInput(control.kind)) return SetInput(*control.widget, label);
    control.label = label;
    ShowLabel(control.kind, *control.widget, label);
}

bool QtDialogWindow::IsChecked(int id) const {
    const auto* button = qobject_cast<QAbstractButton*>(GetControl(id));
    return button != nullptr && button->isChecked();
}
void QtDialogWindow::SetChecked(int id, bool isChecked) {
    if (auto* button = qobject_cast<QAbstractButton*>(GetControl(id))) button->setChecked(isChecked);
}
bool QtDialogWindow::IsEnabled(int id) const {
    const QWidget* widget = GetControl(id);
    return widget != nullptr && widget->isEnabledTo(frame);
}
void QtDialogWindow::SetEnabled(int id, bool isEnabled) {
    if (QWidget* widget = GetControl(id)) widget->setEnabled(isEnabled);
}
bool QtDialogWindow::IsShown(int id) const {
    const QWidget* widget = GetControl(id);
    return widget != nullptr && !widget->isHidden();
}
void QtDialogWindow::SetShown(int id, bool isShown) {
    if (QWidget* widget = GetControl(id)) widget->setVisible(isShown);
}

void QtDialogWindow::SetFocus(int id) {
    QWidget* widget = GetControl(id);
    if (widget == nullptr) return;
    widget->setFocus();
    if (auto* edit = qobject_cast<QLineEdit*>(widget)) edit->selectAll();
}

int QtDialogWindow::GetFocus() const {
    const QWidget* focused = frame != nullptr ? frame->QWidget::window()->focusWidget() : nullptr;
    const auto found = std::find_if(controls.begin(), controls.end(), [&](const Control& control) {
        return control.widget != nullptr && focused != nullptr &&
               (control.widget == focused || control.widget->isAncestorOf(focused));
    });
    return found != controls.end() ? found->id : kNoId;
}

VRectangle QtDialogWindow::GetRectangle(int id) const {
    const QWidget* widget = GetControl(id);
    return widget != nullptr ? FromQt(widget->geometry()) : VRectangle();
}
void QtDialogWindow::SetRectangle(int id, const VRectangle& place) {
    if (QWidget* widget = GetControl(id)) widget->setGeometry(ToQt(place));
}

std::int32_t QtDialogWindow::GetTextWidth(int id, std::u16string_view text) const {
    const QWidget* widget = GetControl(id) != nullptr ? GetControl(id) : frame.data();
    return widget != nullptr ? QFontMetrics(widget->font()).horizontalAdvance(ToQt(text)) : 0;
}

void QtDialogWindow::SetFont(int id, const VUnicodeString& family, int points) {
    QWidget* widget = GetControl(id);
    if (widget == nullptr) return;
    QFont font = widget->font();
    font.setFamily(ToQt(family));
    font.setFixedPitch(true);
    if (points > 0) font.setPointSize(points);
    widget->setFont(font);
}

void QtDialogWindow::SetIcon(int id, const VIcon& icon) {
    auto* label = qobject_cast<QLabel*>(GetControl(id));
    const auto* shown = dynamic_cast<const QtIcon*>(&icon);
    if (label != nullptr && shown != nullptr) ShowIcon(*label, shown->GetIcon());
}

VPoint QtDialogWindow::ToScreen(int id, VPoint point) const {
    const QWidget* widget = GetControl(id);
    // The points of a tree are those of its inside.
    const auto* area = qobject_cast<const QAbstractScrollArea*>(widget);
    if (area != nullptr) widget = area->viewport();
    return widget != nullptr ? FromQt(widget->mapToGlobal(ToQt(point))) : point;
}

VRectangle QtDialogWindow::GetInside() const {
    return frame != nullptr ? FromQt(frame->rect()) : VRectangle();
}

void QtDialogWindow::SetInside(std::int32_t width, std::int32_t height) {
    if (frame == nullptr) return;
    // A size from outside may be anything.
    const QSize size = QSize(width, height).boundedTo(frame->screen()->availableSize()).expandedTo(QSize(1, 1));
    frame->ExpectSize(size);
    frame->resize(size);
}

void QtDialogWindow::LetResize(std::int32_t leastWidth, std::int32_t leastHeight) {
    if (frame == nullptr) return;
    frame->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    frame->setMinimumSize(leastWidth, leastHeight);
    frame->setSizeGripEnabled(true);
}

VWindowPlacement QtDialogWindow::GetPlacement() const {
    VWindowPlacement placement = VWindowPlacement::Unplaced();
    if (frame == nullptr) return placement;
    // A window that was never shown has no other geometry.
    const QRect normal = frame->normalGeometry();
    placement.normal = FromQt(normal.isEmpty() ? frame->geometry() : normal);
    return placement;
}

int QtDialogWindow::StartTimer(unsigned milliseconds) {
    if (frame == nullptr) return 0;
    const unsigned most = std::numeric_limits<int>::max();
    const int timer = frame->startTimer(static_cast<int>(std::clamp(milliseconds, 1U, most)));
    timers.insert(timer);
    return timer;
}

void QtDialogWindow::StopTimer(int timer) {
    if (timers.erase(timer) != 0 && frame != nullptr) frame->killTimer(timer);
}

ITreeView* QtDialogWindow::AttachTree(int id, VTreeItems& items, ITreeEvents& events) {
    auto* tree = dynamic_cast<QtTree*>(GetControl(id));
    if (tree != nullptr) tree->Attach(items, events);
    return tree;
}

void QtDialogWindow::ShowToolbar(int id, const VToolbarState& toolbar) {
    if (frame == nullptr) return;
    const bool isNew = toolBar == nullptr;
    if (isNew) toolBar = MakeToolBar(*frame);
    toolBar->setObjectName(QString::number(id));
    toolBar->setAccessibleName(frame->windowTitle());
    QtDialogFrame* const told = frame;
    FillToolBar(*toolBar, toolbar, *told, [told](int command) { told->TellCommand(command); });
    if (isNew) toolBar->setGeometry(QRect(QPoint(), toolBar->sizeHint()));
    toolBar->setVisible(true);
}

std::unique_ptr<IDialogWindow> QtDialogWindow::CreatePage(const DialogTemplate& page, IDialogEvents& events,
                                                          const VRectangle& place, int behindId) {
    if (frame == nullptr) return nullptr;
    auto made = std::make_unique<QtDialogWindow>(page, events, *this, place);
    const Control* const behind = Find(behindId);
    QWidget* previous = behind == nullptr ? made->ChainControls(nullptr) : nullptr;
    for (const Control& control : controls) {
        if (control.widget != nullptr && TakesFocus(control.kind)) {
            if (previous != nullptr) QWidget::setTabOrder(previous, control.widget);
            previous = control.widget;
        }
        if (&control == behind) previous = made->ChainControls(previous);
    }
    return made;
}

QtDialogWindow* QtDialogWindow::GetPage() const {
    const auto shown = std::find_if(pages.begin(), pages.end(), [](const QtDialogWindow* page) {
        return page->frame != nullptr && !page->frame->isHidden();
    });
    return shown != pages.end() ? *shown : nullptr;
}

}  // namespace connectdialog
