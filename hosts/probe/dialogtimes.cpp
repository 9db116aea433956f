#include "hosts/probe/dialogtimes.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QEvent>
#include <QTimerEvent>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <utility>

#include "config/sessionconfig.h"
#include "frame/connectdialogapi.h"
#include "suite/dialogkit/qt/qtdialogkit.h"
#include "suite/hostsetup/hostsetup.h"

namespace connectdialog::hosts {

namespace {

constexpr int kRounds = 3;

double MillisecondsOf(const QElapsedTimer& timer) {
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// Waits for the first paint of the dialog that is about to open, acts on it then, and closes it.
class FirstPaint : public QObject {
  public:
    explicit FirstPaint(std::function<void(QWidget&)> act) : act(std::move(act)) {
        qApp->installEventFilter(this);
        timer.start();
    }
    double milliseconds = 0;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* const widget = event->type() == QEvent::Paint ? qobject_cast<QWidget*>(watched) : nullptr;
        if (widget == nullptr) return false;
        qApp->removeEventFilter(this);
        window = widget->window();
        startTimer(0);  // when the paint is over
        return false;
    }
    void timerEvent(QTimerEvent* event) override {
        killTimer(event->timerId());
        milliseconds = MillisecondsOf(timer);
        if (act) act(*window);
        window->close();
    }

  private:
    std::function<void(QWidget&)> act;
    QElapsedTimer timer;
    QWidget* window = nullptr;
};

double OpenWizard() {
    const auto config = VRef<SessionConfig>::Adopt(new SessionConfig(u"New"_v, nullptr));
    std::int64_t result = 0;
    bool usesWizard = false;
    const FirstPaint paint({});
    LaunchNewSessionWizard(*config, nullptr, result, usesWizard);
    return paint.milliseconds;
}

double OpenQuickConnect(const std::function<void(QWidget&)>& act) {
    ISessionConfig* none = nullptr;
    const FirstPaint paint(act);
    ShowQuickConnectDialog(&none, VUnicodeString(), static_cast<unsigned>(AppKind::kNorHalden), nullptr);
    return paint.milliseconds;
}

/// The longest of all choices, each made several times.
double SwitchProtocols(QWidget& dialog) {
    const QList<QComboBox*> boxes = dialog.findChildren<QComboBox*>(Qt::FindDirectChildrenOnly);
    double longest = 0;
    for (int choice = 0; !boxes.isEmpty() && choice < kRounds * boxes.first()->count(); ++choice) {
        QElapsedTimer timer;
        timer.start();
        boxes.first()->setCurrentIndex((choice + 1) % boxes.first()->count());
        QApplication::processEvents();
        dialog.repaint();
        longest = std::max(longest, MillisecondsOf(timer));
    }
    return longest;
}

}  // namespace

int MeasureDialogs(int argc, char** argv) {
    QApplication application(argc, argv);
    QtDialogKit kit;
    VUnicodeString notice;
    const auto store = OpenReferenceStore(u"NorHalden"_v, u"memory:"_v, notice);
    if (!store) return 1;
    const double wizard = OpenWizard();
    const double wizardAgain = OpenWizard();
    const double quick = OpenQuickConnect({});
    double longest = 0;
    const double quickAgain = OpenQuickConnect([&](QWidget& dialog) { longest = SwitchProtocols(dialog); });
    std::printf("wizard=%.1f wizard-again=%.1f quick=%.1f quick-again=%.1f switch=%.1f\n", wizard, wizardAgain, quick,
                quickAgain, longest);
    return longest > 0 ? 0 : 1;
}

}  // namespace connectdialog::hosts
