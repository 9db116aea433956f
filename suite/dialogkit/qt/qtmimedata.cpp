#include "suite/dialogkit/qt/qtmimedata.h"

#include <QMimeData>
#include <QUrl>

#include "suite/dialogkit/qt/qttext.h"

namespace connectdialog {

namespace {

const QString& Prefix() {
    static const QString prefix = QStringLiteral("application/x-connectdialog.");
    return prefix;
}

/// A format's name may hold any characters, a MIME type may not.
QString MimeTypeOf(const VUnicodeString& format) {
    return Prefix() + QString::fromLatin1(QUrl::toPercentEncoding(ToQt(format)));
}

std::vector<std::byte> BytesOf(const QByteArray& block) {
    const auto* first = reinterpret_cast<const std::byte*>(block.constData());
    return {first, first + block.size()};
}

}  // namespace

std::unique_ptr<QMimeData> MakeMimeData(const VUnicodeString& format, std::span<const std::byte> data) {
    auto mime = std::make_unique<QMimeData>();
    const auto size = static_cast<qsizetype>(data.size());
    mime->setData(MimeTypeOf(format), QByteArray(reinterpret_cast<const char*>(data.data()), size));
    return mime;
}

bool ReadMimeData(const QMimeData* held, const VUnicodeString& format, std::vector<std::byte>& data) {
    data.clear();
    const QString type = MimeTypeOf(format);
    if (held == nullptr || !held->hasFormat(type)) return false;
    data = BytesOf(held->data(type));
    return true;
}

VDragData FindDragData(const QMimeData* held) {
    if (held == nullptr) return {};
    for (const QString& type : held->formats()) {
        if (!type.startsWith(Prefix())) continue;
        const QByteArray name = type.mid(Prefix().size()).toLatin1();
        return {FromQt(QUrl::fromPercentEncoding(name)), BytesOf(held->data(type))};
    }
    return {};
}

}  // namespace connectdialog
