#include "imports/dialogkit/browseforfolder.h"

#include <gtest/gtest.h>

namespace connectdialog::test {
namespace {

class ScriptedBrowser : public IFolderBrowser {
  public:
    bool Browse(VWindow*, const char16_t* shownTitle, VUnicodeString& path) override {
        title = shownTitle;
        offered = path;
        if (answer != nullptr) path = answer;
        return answer != nullptr;
    }
    void Warn(VWindow*, const char16_t* text) override { warning = text; }

    const char16_t* answer = nullptr;
    VUnicodeString title;
    VUnicodeString offered;
    VUnicodeString warning;
};

TEST(BrowseForFolder, TheAnswerCountsAlsoWhenItIsNoFolderOfTheDisk) {
    VUnicodeString path = u"\\first"_v;
    EXPECT_FALSE(VBrowseForFolder(nullptr, path)) << "nobody to ask with";
    ScriptedBrowser browser;
    InstallFolderBrowser(&browser);
    EXPECT_FALSE(VBrowseForFolder(nullptr, path)) << "given up";
    EXPECT_EQ(path, u"\\first");
    EXPECT_EQ(browser.offered, u"\\first");
    EXPECT_EQ(browser.title, u"Select a folder for storing application data:");
    browser.answer = u"\\chosen";
    EXPECT_TRUE(VBrowseForFolder(nullptr, path));
    EXPECT_EQ(path, u"\\chosen");
    EXPECT_EQ(browser.warning, u"");
    browser.answer = u"";
    EXPECT_TRUE(VBrowseForFolder(nullptr, path));
    EXPECT_EQ(path, u"");
    EXPECT_EQ(browser.warning, u"Failed to retrieve a valid path.");
    InstallFolderBrowser(nullptr);
}

}  // namespace
}  // namespace connectdialog::test
