#include "suite/dialogkit/qt/qticons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <array>

// Stands outside of every namespace, as the toolkit wants it: the resources of a static library are not found of
// themselves.
static void LoadDrawings() {
    Q_INIT_RESOURCE(dialogkit);
}

namespace connectdialog {

namespace {

struct CommandIconRow {
    int command;
    const char* drawing;
};

constexpr CommandIconRow kCommandIcons[] = {
    {2000, "connect"},    {2001, "quick-connect"}, {2002, "properties"}, {2006, "delete"},
    {2007, "new-folder"}, {2008, "new-session"},   {2009, "shortcut"},   {2010, "help"},
    {2011, "cut"},        {2012, "copy"},          {2013, "paste"},      {2014, "find"},
};

constexpr std::array kTreeIcons = {"folder-open", "folder-closed", "session"};

constexpr qreal kDisabledOpacity = 0.35;

/// Draws an SVG in which "currentColor" is the colour of the desktop's texts.
class DrawingEngine : public QIconEngine {
  public:
    explicit DrawingEngine(QString drawing) : drawing(std::move(drawing)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const QColor color = QGuiApplication::palette().color(QPalette::Active, QPalette::WindowText);
        if (mode == QIcon::Disabled) painter->setOpacity(painter->opacity() * kDisabledOpacity);
        QSvgRenderer(ReadDrawing().replace("currentColor", color.name().toUtf8())).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const QString key = QStringLiteral("connectdialog %1 %2 %3 %4 %5")
                                .arg(drawing)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(mode)
                                .arg(QGuiApplication::palette().cacheKey());
        QPixmap picture;
        if (QPixmapCache::find(key, &picture)) return picture;
        picture = QPixmap(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        painter.end();
        QPixmapCache::insert(key, picture);
        return picture;
    }

    QIconEngine* clone() const override { return new DrawingEngine(drawing); }

  private:
    QByteArray ReadDrawing() const {
        QFile file(QStringLiteral(":/connectdialog/icons/%1.svg").arg(drawing));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString drawing;
};

QIcon MakeIcon(const char* drawing) {
    LoadDrawings();
    return QIcon(new DrawingEngine(QString::fromLatin1(drawing)));
}

}  // namespace

const QIcon& TreeIcon(std::uint8_t image) {
    static const std::array<QIcon, kTreeIcons.size()> icons = {MakeIcon(kTreeIcons[0]), MakeIcon(kTreeIcons[1]),
                                                               MakeIcon(kTreeIcons[2])};
    static const QIcon none;
    return image < icons.size() ? icons[image] : none;
}

QIcon CommandIcon(int command) {
    for (const CommandIconRow& row : kCommandIcons)
        if (row.command == command) return MakeIcon(row.drawing);
    return {};
}

}  // namespace connectdialog
