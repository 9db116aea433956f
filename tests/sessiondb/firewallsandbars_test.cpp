// Button bars and firewalls: the lists beside the tree.
#include <array>
#include <cstdlib>
#include <tuple>

#include "config/firewallconfig.h"
#include "foundation/texttools.h"
#include "foundation/vbasicbuffer.h"
#include "foundation/vnarrowstring.h"
#include "foundation/vstringarray.h"
#include "menutoolbar/profileuserbuttonmap.h"
#include "profile/vprofilecapistring.h"
#include "profile/vprofilekey.h"
#include "sessiondb/buttonbarupgrade.h"
#include "sessiondb/firewalllist.h"
#include "sessiondb/sessiondb.h"
#include "support/fakesuite.h"
#include "support/strings.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

class ButtonBarsTest : public LibraryTest {
  protected:
    ButtonBarsTest() { ForgetButtonBarUpgrade(); }

    static VRef<ProfileUserButtonMap> Load(const char16_t* keyName, const char16_t* bar) {
        auto map = VRef<ProfileUserButtonMap>::Adopt(new ProfileUserButtonMap);
        WithKey(keyName, [&](VProfileKey& key) { map->LoadButtons(&key, VUnicodeString(bar)); });
        return map;
    }
};

TEST_F(ButtonBarsTest, ALineHasFourOrFiveFieldsEachEndedByAComma) {
    using Text = const char16_t*;
    const std::tuple<Text, std::int32_t, Text, Text, std::array<Text, 3>> rows[] = {
        // The line, the function, the label, the text and the arguments.
        {u"SEND,a,b,c,", 1, u"a", u"a", {u"b", u"c", u""}},
        {u" \tSEND,a,b,c,d,rest is ignored ", 1, u"a", u"a", {u"b", u"c", u"d"}},
        {u"SEND,a,b,c", 0, u"", u"", {u"", u"", u""}},
        {u"SEND,a,b,c,d,e,", 0, u"", u"", {u"", u"", u""}},
        {u"SEND,a\\,b\\\\,\\c,,", 1, u"a,b\\", u"a,b\\", {u"c", u"", u""}},
        {u"SEND,one\\r\\ntwo,,,", 1, u"onetwo", u"one\r\ntwo", {u"", u"", u""}},
        {u"NO SUCH,a,b,c,", -1, u"a", u"a", {u"b", u"c", u""}},
    };
    for (const auto& [line, function, label, text, arguments] : rows) {
        const UserButton button = DecodeButtonLine(VUnicodeString(line));
        SCOPED_TRACE(VNarrowString(VUnicodeString(line)).GetData());
        EXPECT_EQ(button.function, function);
        EXPECT_TRUE(button.label == label && button.text == text);
        EXPECT_TRUE(button.argument1 == arguments[0] && button.argument2 == arguments[1]);
        EXPECT_EQ(button.argument3, arguments[2]);
    }
}

TEST_F(ButtonBarsTest, LinesWithoutAFunctionAreDroppedAtTheNextSave) {
    WithKey(u"ButtonBarV3", [](VProfileKey& key) {
        key.WriteMultiString(u"bar", Strings({u"NONE,a,b,c,", u"SEND,a,b,c,", u"broken", u"WHAT,a,b,c,"}));
    });
    const auto map = Load(u"ButtonBarV3", u"bar");
    EXPECT_EQ(map->GetButtons().GetCount(), 2U);
    EXPECT_EQ(map->GetLines(), Strings({u"SEND,a,b,c,", u"WHAT,a,b,c,"}));
    EXPECT_TRUE(map->IsChanged());
    EXPECT_EQ(Load(u"ButtonBarV3", u"absent")->GetButtons().GetCount(), 0U);
}

TEST_F(ButtonBarsTest, TheNewestOlderFormIsMovedOnce) {
    WithKey(u"ButtonBar", [](VProfileKey& key) { key.WriteMultiString(u"first", Strings({u"SEND,1,,,"})); });
    WithKey(u"ButtonBarV2", [](VProfileKey& key) {
        key.WriteMultiString(u"Mine", Strings({u"SEND,2,,,"}));
        key.WriteString(u"no bar", u"SEND,3,,,");
    });
    UpgradeButtonBars();
    VStringArray names;
    EnumerateButtonBars(u"ButtonBarV3", names);
    ASSERT_EQ(names.GetCount(), 2U);
    EXPECT_EQ(names[0], u"Default");
    EXPECT_EQ(names[1], u"Mine");
    EXPECT_EQ(Load(u"ButtonBarV3", u"Mine")->GetLines(), Strings({u"SEND,2,,,"}));
    WithKey(u"ButtonBarV2", [](VProfileKey& key) { key.WriteMultiString(u"Mine", Strings({u"SEND,9,,,"})); });
    ForgetButtonBarUpgrade();
    UpgradeButtonBars();
    EXPECT_EQ(Load(u"ButtonBarV3", u"Mine")->GetLines(), Strings({u"SEND,2,,,"}));
    EXPECT_EQ(Load(u"ButtonBarV2", u"Mine")->GetLines(), Strings({u"SEND,9,,,"})) << "the older keys stay";
}

TEST_F(ButtonBarsTest, TheFirstFormIsMovedWhereThereIsNoNewerOne) {
    WithKey(u"ButtonBar", [](VProfileKey& key) { key.WriteMultiString(u"old", Strings({u"SEND,\\r\\n,,,"})); });
    UpgradeButtonBars();
    const auto map = Load(u"ButtonBarV3", u"old");
    ASSERT_EQ(map->GetButtons().GetCount(), 1U);
    EXPECT_EQ(map->GetButtons()[0].text, u"\r\n");
    EXPECT_TRUE(map->GetButtons()[0].label.IsEmpty());
}

class FirewallListTest : public LibraryTest {
  protected:
    FirewallListTest() { InstallSessionDatabase(); }

    static VRef<FirewallConfig> Load(const char16_t* name) { return VRef<FirewallConfig>::Adopt(LoadFirewall(name)); }
    static void Make(const char16_t* name, const char16_t* type, const char16_t* user = u"") {
        WithKey(BuildFirewallKeyPath(name).GetData(), [&](VProfileKey& key) {
            key.WriteString(u"Firewall Type", type);
            key.WriteString(u"Firewall User", user);
        });
    }
};

TEST_F(FirewallListTest, OnlyExactlyNoneNeedsNoKey) {
    const auto none = Load(u"None");
    ASSERT_TRUE(none);
    EXPECT_TRUE(SaveFirewall(*none));
    EXPECT_FALSE(Load(u"none"));
    Make(u"dmz", u"SOCKSv5");
    EXPECT_EQ(Load(u"dmz")->GetTypeNumber(), 3U);
    Make(u"odd", u"socksv4");
    EXPECT_EQ(Load(u"odd")->GetTypeNumber(), 0U);

    const auto buffer = VRef<VBasicBuffer>::Adopt(new VBasicBuffer(256));
    EnumerateFirewalls(*buffer);
    VStringArray names;
    names.ReadFrom(buffer.Get());
    EXPECT_EQ(VJoin(names, u",", u"", u""), u"None,dmz,odd");
}

TEST_F(FirewallListTest, APasswordOfAnOlderVersionIsRewrittenOnceItCanBeRead) {
    const TemporaryFolder folder;
    setenv("XDG_DATA_HOME", folder.GetPath().c_str(), 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    VProfileCapiString older;
    const VUnicodeString readable = older.Protect(u"s3cret"_v);
    ASSERT_TRUE(readable.View().starts_with(u"CAPI:"));
    const VUnicodeString unreadable = u"CAPI:00"_v;
    for (const VUnicodeString& text : {readable, unreadable}) {
        Make(u"f", u"SOCKSv5_USERPASS");
        WithKey(u"Firewalls\\f", [&](VProfileKey& key) { key.WriteString(u"Firewall Password", text.GetData()); });
        const auto firewall = Load(u"f");
        panels.promptAnswer = nullptr;
        VUnicodeStringI password;
        EXPECT_EQ(firewall->GetPassword(&password), text == readable);
        EXPECT_EQ(password, text == readable ? u"s3cret" : u"");
        EXPECT_TRUE(SaveFirewall(*firewall));
        EXPECT_EQ(TextAt(u"Firewalls\\f"_v, u"Firewall Password").View().starts_with(u"CAPI:"), text != readable)
            << "what cannot be read now stays as it is";
        panels.promptAnswer = u"new";
        panels.promptSaves = true;
        EXPECT_TRUE(firewall->GetPassword(&password));
        EXPECT_TRUE(SaveFirewall(*firewall));
        EXPECT_FALSE(TextAt(u"Firewalls\\f"_v, u"Firewall Password").View().starts_with(u"CAPI:"))
            << "nor comes back later";
    }
}

}  // namespace
}  // namespace connectdialog::test
