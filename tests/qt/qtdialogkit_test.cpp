#include "suite/dialogkit/qt/qtdialogkit.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

#include "qtuser.h"
#include "support/dialogkitconformance.h"

namespace connectdialog::test {

struct QtBackEnd {
    using Kit = QtPlayedKit;
    using Dialog = QtUserDialog;
    using Tree = QtUserTree;
    static bool CanDrag() { return QGuiApplication::platformName() != QStringLiteral("offscreen"); }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, DialogKitConformance, QtBackEnd);

}  // namespace connectdialog::test
