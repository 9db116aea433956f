#include "foundation/vnarrowstring.h"
#include "foundation/vstringarray.h"
#include "menutoolbar/profileuserbuttonmap.h"
#include "profile/vprofilekey.h"
#include "sessiondb/buttonbarupgrade.h"
#include "support/fakesuite.h"

namespace connectdialog::test {
namespace {

class ButtonBarsTest : public LibraryTest {
  protected:
    ButtonBarsTest() { ForgetButtonBarUpgrade(); }

    static VStringArray Lines(std::initializer_list<const char16_t*> lines) {
        VStringArray array;
        for (const char16_t* line : lines) array.Add(VUnicodeString(line));
        return array;
    }
    static VRef<ProfileUserButtonMap> Load(const char16_t* keyName, const char16_t* bar) {
        auto map = VRef<ProfileUserButtonMap>::Adopt(new ProfileUserButtonMap);
        WithKey(keyName, [&](VProfileKey& key) { map->LoadButtons(&key, VUnicodeString(bar)); });
        return map;
    }
};

TEST_F(ButtonBarsTest, ALineHasFourOrFiveFieldsEachEndedByAComma) {
    struct Row {
        const char16_t* line;
        std::int32_t function;
        const char16_t* label;
        const char16_t* text;
        const char16_t* arguments[3];
    };
    const Row rows[] = {
        {u"SEND,a,b,c,", 1, u"a", u"a", {u"b", u"c", u""}},
        {u" \tSEND,a,b,c,d,rest is ignored ", 1, u"a", u"a", {u"b", u"c", u"d"}},
        {u"SEND,a,b,c", 0, u"", u"", {u"", u"", u""}},
        {u"SEND,a,b,c,d,e,", 0, u"", u"", {u"", u"", u""}},
        {u"SEND,a\\,b\\\\,\\c,,", 1, u"a,b\\", u"a,b\\", {u"c", u"", u""}},
        {u"SEND,one\\r\\ntwo,,,", 1, u"onetwo", u"one\r\ntwo", {u"", u"", u""}},
        {u"NO SUCH,a,b,c,", -1, u"a", u"a", {u"b", u"c", u""}},
        {u"NONE,a,b,c,", 0, u"a", u"a", {u"b", u"c", u""}},
        {u"SEND,a,b,c\\", 0, u"", u"", {u"", u"", u""}},
        {u"", 0, u"", u"", {u"", u"", u""}},
    };
    for (const Row& row : rows) {
        const UserButton button = DecodeButtonLine(VUnicodeString(row.line));
        SCOPED_TRACE(VNarrowString(VUnicodeString(row.line)).GetData());
        EXPECT_EQ(button.function, row.function);
        EXPECT_EQ(button.label, row.label);
        EXPECT_EQ(button.text, row.text);
        EXPECT_EQ(button.argument1, row.arguments[0]);
        EXPECT_EQ(button.argument2, row.arguments[1]);
        EXPECT_EQ(button.argument3, row.arguments[2]);
    }
}

TEST_F(ButtonBarsTest, LinesWithoutAFunctionAreDroppedAtTheNextSave) {
    WithKey(u"ButtonBarV3", [](VProfileKey& key) {
        key.WriteMultiString(u"bar", Lines({u"NONE,a,b,c,", u"SEND,a,b,c,", u"broken", u"WHAT,a,b,c,"}));
    });
    const auto map = Load(u"ButtonBarV3", u"bar");
    EXPECT_EQ(map->GetButtons().GetCount(), 2U);
    EXPECT_EQ(map->GetLines(), Lines({u"SEND,a,b,c,", u"WHAT,a,b,c,"}));
    EXPECT_TRUE(map->IsChanged());
    EXPECT_EQ(Load(u"ButtonBarV3", u"absent")->GetButtons().GetCount(), 0U);
}

TEST_F(ButtonBarsTest, TheNewestOlderFormIsMovedOnce) {
    WithKey(u"ButtonBar", [](VProfileKey& key) { key.WriteMultiString(u"first", Lines({u"SEND,1,,,"})); });
    WithKey(u"ButtonBarV2", [](VProfileKey& key) {
        key.WriteMultiString(u"Mine", Lines({u"SEND,2,,,"}));
        key.WriteString(u"no bar", u"SEND,3,,,");
    });
    UpgradeButtonBars();
    VStringArray names;
    EnumerateButtonBars(u"ButtonBarV3", names);
    ASSERT_EQ(names.GetCount(), 2U);
    EXPECT_EQ(names[0], u"Default");
    EXPECT_EQ(names[1], u"Mine");
    EXPECT_EQ(Load(u"ButtonBarV3", u"Mine")->GetLines(), Lines({u"SEND,2,,,"}));
    WithKey(u"ButtonBarV2", [](VProfileKey& key) { key.WriteMultiString(u"Mine", Lines({u"SEND,9,,,"})); });
    ForgetButtonBarUpgrade();
    UpgradeButtonBars();
    EXPECT_EQ(Load(u"ButtonBarV3", u"Mine")->GetLines(), Lines({u"SEND,2,,,"}));
    EXPECT_EQ(Load(u"ButtonBarV2", u"Mine")->GetLines(), Lines({u"SEND,9,,,"})) << "the older keys stay";
}

TEST_F(ButtonBarsTest, TheFirstFormIsMovedWhateverItsLinesHold) {
    std::u16string breaks;
    for (int i = 0; i < 200'000; ++i) breaks += u"\\r\\n";
    WithKey(u"ButtonBar", [&](VProfileKey& key) {
        VStringArray lines;
        lines.Add(VUnicodeString(u"SEND," + breaks + u",,,"));
        key.WriteMultiString(u"long", lines);
    });
    UpgradeButtonBars();
    const auto map = Load(u"ButtonBarV3", u"long");
    ASSERT_EQ(map->GetButtons().GetCount(), 1U);
    EXPECT_EQ(map->GetButtons()[0].text.GetLength(), 400'000U);
    EXPECT_TRUE(map->GetButtons()[0].label.IsEmpty());
}

TEST_F(ButtonBarsTest, WithoutOlderBarsAnEmptyDefaultIsMade) {
    UpgradeButtonBars();
    VStringArray lines = Lines({u"x"});
    WithKey(u"ButtonBarV3", [&](VProfileKey& key) { EXPECT_TRUE(key.ReadMultiString(u"Default", lines)); });
    EXPECT_TRUE(lines.IsEmpty());
}

}  // namespace
}  // namespace connectdialog::test
