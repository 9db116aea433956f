// Texts, points and keys of the library in the types of the toolkit, and back.
#pragma once

#include <QKeySequence>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>
#include <cstdint>
#include <string_view>

#include "imports/dialogkit/idialogwindow.h"

class QKeyEvent;

namespace connectdialog {

QString ToQt(std::u16string_view text);
/// What the toolkit shows as this text, cut where it is very long: it takes a tip for markup when it looks like it, and
/// opens the files that markup names.
QString MakeTip(const QString& text);
VUnicodeString FromQt(const QString& text);
/// The text as long as `text` stands unchanged.
inline std::u16string_view ViewOf(const QString& text) {
    return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())};
}

inline QPoint ToQt(VPoint point) {
    return {point.x, point.y};
}
inline VPoint FromQt(QPoint point) {
    return {point.x(), point.y()};
}
/// The edges of the toolkit's rectangles lie inside, ours outside.
inline QRect ToQt(const VRectangle& place) {
    return {place.left, place.top, place.right - place.left, place.bottom - place.top};
}
inline VRectangle FromQt(const QRect& place) {
    return {place.x(), place.y(), place.x() + place.width(), place.y() + place.height()};
}

KeyModifiers FromQt(Qt::KeyboardModifiers modifiers);

/// The virtual key (a capital letter, a digit or one of kKey…), 0 for a key that is none of these.
std::uint16_t VirtualKeyOf(const QKeyEvent& event);
/// The keys of the toolkit that give the virtual key with these modifiers; there are two Return keys.
QList<QKeySequence> KeysOf(std::uint16_t virtualKey, KeyModifiers modifiers);

// Labels. One "&" marks the letter behind it, two stand for one that is shown.

/// The letter that a label marks, in upper case; null when none is marked.
QChar MnemonicOf(const QString& label);
/// What is read aloud: no marks, no ellipsis or colon at the end.
QString SpokenLabel(const QString& label);
/// What is shown where no letter is underlined.
QString WithoutMnemonic(const QString& label);

}  // namespace connectdialog
