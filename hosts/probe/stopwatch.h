// Measures the connect dialog, or takes its picture, once it was painted.
#pragma once

#include <QObject>
#include <functional>
#include <string>

#include "imports/dialogkit/vtreeitems.h"

namespace connectdialog {
class QtTree;
}

namespace connectdialog::hosts {

/// Waits for the first paint of a tree, does its work there and closes the window.
class Stopwatch : public QObject {
  public:
    /// With `pictureFile` the dialog is saved there; else figures are printed, those of the root's folder `folder` too
    /// unless it is empty. `parent` owns the object.
    Stopwatch(QObject* parent, std::string folder, std::string pictureFile);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    void Measure();
    void MeasureFolder();
    void TakePicture();
    TreeItem FindFolder() const;
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = QString());
    /// Milliseconds, until the paint is over.
    double Time(const std::function<void()>& act);
    double Longest(int count, const std::function<void(int)>& act);

    std::string folder;
    std::string pictureFile;
    QtTree* tree = nullptr;
};

}  // namespace connectdialog::hosts
