// The tests of the desktop's back end run in an application of their own, without a screen unless one is asked for.
#include <QApplication>
#include <gtest/gtest.h>

int main(int argumentCount, char** arguments) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argumentCount, arguments);
    // Whatever desktop the tests run on, the widgets are the same.
    QApplication::setStyle(QStringLiteral("fusion"));
    ::testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
