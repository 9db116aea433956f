#include "hosts/common/hostwindow.h"

#include <QApplication>
#include <QBuffer>
#include <QFontDatabase>
#include <QIcon>
#include <QImageReader>
#include <array>
#include <string>

#include "hosts/common/tell.h"
#include "menutoolbar/menuimage.h"
#include "suite/dialogkit/qt/qtdialogkit.h"

// Stands outside of every namespace, as the toolkit wants it: the resources of a static library are not found of
// themselves.
static void LoadIcons() {
    Q_INIT_RESOURCE(hosts);
}

namespace connectdialog::hosts {

namespace {

constexpr char kLastResort[] = "offscreen";

bool IsSet(const char* variable) {
    return !qEnvironmentVariableIsEmpty(variable);
}

/// The platforms to try, the first that works counts. The toolkit ends the process when none does, so the last is one
/// that always works.
std::string PlatformsToTry() {
    const std::string asked = qgetenv("QT_QPA_PLATFORM").toStdString();
    std::string platforms = asked;
    if (asked.empty()) platforms = IsSet("WAYLAND_DISPLAY") ? "wayland;xcb" : "xcb";
    return platforms + ";" + kLastResort;
}

/// What the toolkit says about platforms that do not work is told by us.
void DropPlatformMessages(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const bool isAboutPlatform = context.category != nullptr && QByteArray(context.category).startsWith("qt.qpa");
    if (type != QtFatalMsg && isAboutPlatform) return;
    std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
}

/// Images of toolbar buttons in the user's description of menus.
class QtMenuImageDecoder : public IMenuImageDecoder {
  public:
    QtMenuImageDecoder() { InstallMenuImageDecoder(this); }
    ~QtMenuImageDecoder() override { InstallMenuImageDecoder(nullptr); }
    QtMenuImageDecoder(const QtMenuImageDecoder&) = delete;
    QtMenuImageDecoder& operator=(const QtMenuImageDecoder&) = delete;

    VMenuBitmap Decode(std::string_view bytes) override {
        QByteArray data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
        QBuffer buffer(&data);
        QImageReader reader(&buffer);
        if (!kImageFormats.contains(reader.format())) return nullptr;
        const QSize size = reader.size();
        if (size.isEmpty() || size.width() > kLargestSide || size.height() > kLargestSide) return nullptr;
        const QImage image = reader.read();
        if (image.isNull()) return nullptr;
        return std::make_shared<const QtIcon>(QIcon(QPixmap::fromImage(image)));
    }

  private:
    static constexpr int kLargestSide = 1024;  // pixels
    inline static const QList<QByteArray> kImageFormats = {"bmp", "png", "gif", "jpeg", "jpg", "ico"};
};

class QtHostWindow : public HostWindow {
  public:
    explicit QtHostWindow(const HostKind& kind)
        : platforms(PlatformsToTry()),
          words{const_cast<char*>(kind.program), platformOption.data(), platforms.data(), nullptr},
          application(wordCount, words.data()),
          icon(LoadIcon(kind)) {
        // Between two dialogs no window is open, and that is no reason to end.
        QApplication::setQuitOnLastWindowClosed(false);
        QApplication::setApplicationName(QString::fromUtf16(kind.appName));
        QGuiApplication::setDesktopFileName(QString::fromLatin1(kind.program));
        QApplication::setWindowIcon(icon.GetIcon());
    }

    VIcon* GetIcon() override { return &icon; }

  private:
    static QIcon LoadIcon(const HostKind& kind) {
        LoadIcons();
        return QIcon(QStringLiteral(":/hosts/%1.svg").arg(QString::fromLatin1(kind.program)));
    }

    std::string platforms;
    std::string platformOption = "-platform";
    std::array<char*, 4> words;
    int wordCount = 3;
    QApplication application;
    QtIcon icon;
    QtDialogKit kit;
    QtMenuImageDecoder images;
};

}  // namespace

std::unique_ptr<HostWindow> OpenHostWindow(const HostKind& kind, VUnicodeString& fault) {
    const bool wantsNone = qgetenv("QT_QPA_PLATFORM").contains(kLastResort);
    if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY") && !IsSet("QT_QPA_PLATFORM")) {
        fault = u"there is no screen to show a window on"_v;
        return nullptr;
    }
    const QtMessageHandler before = qInstallMessageHandler(DropPlatformMessages);
    auto window = std::make_unique<QtHostWindow>(kind);
    qInstallMessageHandler(before);
    if (QGuiApplication::platformName() == QLatin1String(kLastResort) && !wantsNone) {
        fault = u"the screen cannot be reached"_v;
        return nullptr;
    }
    if (QFontDatabase::families(QFontDatabase::SimplifiedChinese).isEmpty())
        Tell(kind, u"there is no font for Chinese, in which the texts are; the Debian package fonts-noto-cjk has one");
    return window;
}

}  // namespace connectdialog::hosts
