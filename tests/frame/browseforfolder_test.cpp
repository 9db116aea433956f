#include "imports/dialogkit/browseforfolder.h"

#include <gtest/gtest.h>

#include "suite/dialogkit/headless/headlesskit.h"

namespace connectdialog::test {
namespace {

TEST(BrowseForFolder, TheAnswerCountsAlsoWhenItIsNoFolderOfTheDisk) {
    VUnicodeString path = u"\\first"_v;
    EXPECT_FALSE(VBrowseForFolder(nullptr, path)) << "nobody to ask with";
    HeadlessDialogKit kit;
    kit.ExpectFolder(nullptr);
    EXPECT_FALSE(VBrowseForFolder(nullptr, path)) << "given up";
    EXPECT_EQ(path, u"\\first");
    kit.ExpectFolder(u"\\chosen");
    EXPECT_TRUE(VBrowseForFolder(nullptr, path));
    EXPECT_EQ(path, u"\\chosen");
    kit.ExpectFolder(u"");
    kit.ExpectBox(u"Failed to retrieve a valid path."_v, kAnswerOk);
    EXPECT_TRUE(VBrowseForFolder(nullptr, path));
    EXPECT_EQ(path, u"");
    EXPECT_EQ(kit.TakeFaults(), "");
}

}  // namespace
}  // namespace connectdialog::test
