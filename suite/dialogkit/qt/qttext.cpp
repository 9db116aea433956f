#include "suite/dialogkit/qt/qttext.h"

#include <QKeyEvent>
#include <algorithm>
#include <span>

#include "resources/accelerators.h"

namespace connectdialog {

namespace {

constexpr int kFunctionKeys = 24;

struct VirtualKeyRow {
    int key;
    std::uint16_t virtualKey;
};

constexpr VirtualKeyRow kVirtualKeys[] = {
    {Qt::Key_Return, kKeyReturn}, {Qt::Key_Enter, kKeyReturn},   {Qt::Key_Escape, kKeyEscape},
    {Qt::Key_Left, kKeyLeft},     {Qt::Key_Up, kKeyUp},          {Qt::Key_Right, kKeyRight},
    {Qt::Key_Down, kKeyDown},     {Qt::Key_PageUp, kKeyPageUp},  {Qt::Key_PageDown, kKeyPageDown},
    {Qt::Key_Home, kKeyHome},     {Qt::Key_End, kKeyEnd},        {Qt::Key_Insert, kKeyInsert},
    {Qt::Key_Delete, kKeyDelete}, {Qt::Key_Backspace, kKeyBack}, {Qt::Key_Tab, kKeyTab},
    {Qt::Key_Backtab, kKeyTab},   {Qt::Key_Space, kKeySpace},    {Qt::Key_Menu, kKeyMenu},
};

/// Elsewhere on the keyboard these are characters that a user types to find a name.
constexpr VirtualKeyRow kKeypadKeys[] = {
    {Qt::Key_Plus, kKeyAdd}, {Qt::Key_Minus, kKeySubtract}, {Qt::Key_Asterisk, kKeyMultiply}};

}  // namespace

QString ToQt(std::u16string_view text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

QString MakeTip(const QString& text) {
    constexpr qsizetype kMost = 2000;
    const QString shown = text.size() <= kMost ? text : text.left(kMost) + u'…';
    return QStringLiteral("<div style='white-space:pre'>%1</div>").arg(shown.toHtmlEscaped());
}

VUnicodeString FromQt(const QString& text) {
    return ViewOf(text);
}

KeyModifiers FromQt(Qt::KeyboardModifiers modifiers) {
    KeyModifiers bits = Accelerator::kNone;
    if (modifiers.testFlag(Qt::ControlModifier)) bits |= Accelerator::kControl;
    if (modifiers.testFlag(Qt::AltModifier)) bits |= Accelerator::kAlt;
    if (modifiers.testFlag(Qt::ShiftModifier)) bits |= Accelerator::kShift;
    return bits;
}

std::uint16_t VirtualKeyOf(const QKeyEvent& event) {
    const int key = event.key();
    const bool isLetterOrDigit = (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
    if (isLetterOrDigit) return static_cast<std::uint16_t>(key);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return static_cast<std::uint16_t>(kKeyF1 + (key - Qt::Key_F1));
    const auto find = [key](std::span<const VirtualKeyRow> rows) {
        const auto row = std::ranges::find(rows, key, &VirtualKeyRow::key);
        return row == rows.end() ? std::uint16_t{0} : row->virtualKey;
    };
    return event.modifiers().testFlag(Qt::KeypadModifier) && find(kKeypadKeys) != 0 ? find(kKeypadKeys)
                                                                                    : find(kVirtualKeys);
}

QList<QKeySequence> KeysOf(std::uint16_t virtualKey, KeyModifiers modifiers) {
    Qt::KeyboardModifiers held = Qt::NoModifier;
    held.setFlag(Qt::ControlModifier, (modifiers & Accelerator::kControl) != 0);
    held.setFlag(Qt::AltModifier, (modifiers & Accelerator::kAlt) != 0);
    held.setFlag(Qt::ShiftModifier, (modifiers & Accelerator::kShift) != 0);
    QList<QKeySequence> keys;
    const auto add = [&](int key) { keys += QKeyCombination(held, static_cast<Qt::Key>(key)); };
    for (const VirtualKeyRow& row : kVirtualKeys)
        if (row.virtualKey == virtualKey) add(row.key);
    const bool isLetterOrDigit = (virtualKey >= 'A' && virtualKey <= 'Z') || (virtualKey >= '0' && virtualKey <= '9');
    if (isLetterOrDigit) add(virtualKey);
    if (virtualKey >= kKeyF1 && virtualKey < kKeyF1 + kFunctionKeys) add(Qt::Key_F1 + (virtualKey - kKeyF1));
    return keys;
}

QChar MnemonicOf(const QString& label) {
    for (qsizetype i = 0; i + 1 < label.size(); ++i) {
        if (label[i] != u'&') continue;
        if (label[++i] != u'&') return label[i].toUpper();
    }
    return {};
}

QString WithoutMnemonic(const QString& label) {
    QString text;
    for (qsizetype i = 0; i < label.size(); ++i) {
        if (label[i] == u'&' && ++i == label.size()) break;
        text += label[i];
    }
    return text;
}

QString SpokenLabel(const QString& label) {
    QString text = label;
    // East Asian labels carry the letter behind the words, in brackets of its own.
    const QChar mnemonic = MnemonicOf(label);
    if (!mnemonic.isNull()) text.remove(QStringLiteral("(&%1)").arg(mnemonic), Qt::CaseInsensitive);
    text = WithoutMnemonic(text).trimmed();
    while (text.endsWith(u':') || text.endsWith(u'.') || text.endsWith(u'：')) text.chop(1);
    return text;
}

}  // namespace connectdialog
