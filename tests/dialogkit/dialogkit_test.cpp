#include <gtest/gtest.h>

#include "foundation/vreportmessageparams.h"
#include "imports/dialogkit/textmetrics.h"
#include "imports/dialogkit/vdialog.h"
#include "imports/dialogkit/vmessagebox.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "imports/dialogkit/vtoolbarstate.h"
#include "imports/dialogkit/vtreeitems.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "suite/dialogkit/headless/headlesstree.h"
#include "support/treeconformance.h"

namespace connectdialog::test {

struct HeadlessBackEnd {
    using Kit = HeadlessDialogKit;
    using Dialog = HeadlessDialog;
    using Tree = HeadlessTree;
    static bool CanDrag() { return true; }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, DialogKitConformance, HeadlessBackEnd);
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, TreeConformance, HeadlessBackEnd);

namespace {

/// Ten characters wide, or five of East Asian scripts.
constexpr ControlTemplate kControls[] = {{ControlKind::kStatic, 10, u"path", {0, 0, 40, 9}}};
constexpr DialogTemplate kTemplate{90, 100, 50, u"Test", kControls};

TEST(DialogSeam, WhatWasNotExpectedIsAFaultAndAnsweredHarmlessly) {
    HeadlessDialogKit kit;
    VDialog dialog(kTemplate, nullptr);
    EXPECT_EQ(dialog.DoModal(), kDialogCancelled);
    EXPECT_EQ(VMessageBox(nullptr, u"delete?"_v, kBoxYesNo | kBoxWarning), kAnswerNo);
    VPopupMenu menu;
    menu.Add(6, u"six"_v);
    menu.Enable(6, false);
    kit.ExpectMenu([](const VPopupMenu&) { return 6; });
    EXPECT_EQ(kit.TrackPopupMenu(nullptr, menu, {}), 0);
    kit.ExpectBox(u"late"_v, kAnswerOk);
    EXPECT_EQ(kit.TakeFaults(),
              "unexpected: dialog 90\nunexpected: box delete?\nnot to be chosen: command 6\ndid not come: box late\n");
    EXPECT_EQ(kit.TakeFaults(), "");
}

TEST(DialogSeam, PathsAreShortenedInTheMiddleUntilTheyFit) {
    HeadlessDialogKit kit;
    VDialog dialog(kTemplate, nullptr);
    ASSERT_TRUE(dialog.Create());
    const std::pair<const char16_t*, const char16_t*> rows[] = {{u"ab\\cd", u"ab\\cd"},
                                                                {u"ab\\cdef\\gh", u"ab\\cdef\\gh"},
                                                                {u"ab\\cdef\\ghi", u"ab\\...\\ghi"},
                                                                {u"abcd\\efg\\hi\\jk", u"...\\jk"},
                                                                {u"a\\bcdefghijklm", u"...\\bcd..."},
                                                                {u"abcdefghijklm", u"abcdefg..."},
                                                                {u"会话会话会话", u"会话会..."},
                                                                {u"", u""}};
    for (const auto& [path, shown] : rows) EXPECT_EQ(AbbreviatePathname(*dialog.GetWindow(), 10, path), shown);
    EXPECT_EQ(AbbreviatePathname(*dialog.GetWindow(), 999, u"no such control"_v), u"no such control");
    EXPECT_EQ(EscapeAmpersand(u"a & b && c"_v), u"a && b &&&& c");
    dialog.Destroy();
}

}  // namespace
}  // namespace connectdialog::test
