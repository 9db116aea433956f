// The tests of the desktop's back end run in an application of their own, without a screen unless one is asked for.
// With --screenshots FOLDER [--dark] it takes pictures of the dialogs instead; with --hold-clipboard it is another
// program that copied something and hangs.
#include <QApplication>
#include <QClipboard>
#include <csignal>
#include <gtest/gtest.h>
#include <iostream>

#include "screenshots.h"

int main(int argumentCount, char** arguments) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argumentCount, arguments);
    // Whatever desktop the tests run on, the widgets are the same.
    QApplication::setStyle(QStringLiteral("fusion"));
    const QStringList words = QApplication::arguments();
    if (words.value(1) == QStringLiteral("--screenshots")) {
        if (words.contains(QStringLiteral("--dark"))) connectdialog::test::GoDark();
        return connectdialog::test::TakeScreenshots(words.value(2)) ? 0 : 1;
    }
    if (words.value(1) == QStringLiteral("--hold-clipboard")) {
        QGuiApplication::clipboard()->setText(words.value(1));
        QApplication::processEvents();
        std::cout << "held" << std::endl;
        return std::raise(SIGSTOP);
    }
    ::testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
