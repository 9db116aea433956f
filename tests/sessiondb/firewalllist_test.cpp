#include "sessiondb/firewalllist.h"

#include <cstdlib>

#include "config/firewallconfig.h"
#include "foundation/texttools.h"
#include "foundation/vbasicbuffer.h"
#include "foundation/vstringarray.h"
#include "profile/vprofilecapistring.h"
#include "profile/vprofilekey.h"
#include "sessiondb/sessiondb.h"
#include "support/fakesuite.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

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
    static VUnicodeString StoredText(const char16_t* name, const char16_t* value) {
        VUnicodeString text;
        WithKey(BuildFirewallKeyPath(name).GetData(), [&](VProfileKey& key) { key.ReadString(value, text); });
        return text;
    }
};

TEST_F(FirewallListTest, OnlyExactlyNoneNeedsNoKey) {
    const auto none = Load(u"None");
    ASSERT_TRUE(none);
    VUnicodeString type;
    none->GetType(type);
    EXPECT_EQ(type, u"None");
    EXPECT_EQ(none->GetPort(), 1080);
    EXPECT_TRUE(SaveFirewall(*none));
    EXPECT_FALSE(Load(u"none"));
    WithKey(u"Firewalls\\no type", [](VProfileKey& key) { key.WriteDword(u"Firewall Port", 1); });
    EXPECT_FALSE(Load(u"no type"));
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

TEST_F(FirewallListTest, TheUserIsAskedOnceAndOnlyForWhatIsMissing) {
    struct Row {
        const char16_t* type;
        const char16_t* stored;
        const char16_t* answer;  ///< null: gives up
        bool saves;
        bool result;
        const char16_t* given;
        int prompts;  ///< after two questions
        const char16_t* storedAfter;
    };
    const Row rows[] = {
        {u"SOCKSv5", u"", u"typed", false, true, u"", 0, u""},
        {u"SOCKSv5_USERPASS", u"stored", u"typed", false, true, u"stored", 0, u"stored"},
        {u"SOCKSv5_USERPASS", u"", u"typed", false, true, u"typed", 1, u""},
        {u"HTTP_BASICAUTH", u"", u"typed", true, true, u"typed", 1, u"typed"},
        {u"HTTP_BASICAUTH", u"", nullptr, true, false, u"", 2, u""},
    };
    for (const Row& row : rows) {
        Make(u"f", row.type, row.stored);
        const auto firewall = Load(u"f");
        panels.promptAnswer = row.answer;
        panels.promptSaves = row.saves;
        panels.prompts = 0;
        VUnicodeStringI first;
        VUnicodeStringI second;
        EXPECT_EQ(firewall->GetUsername(&first), row.result);
        firewall->GetUsername(&second);
        EXPECT_EQ(first, row.given);
        EXPECT_EQ(second, row.given);
        EXPECT_EQ(panels.prompts, row.prompts);
        EXPECT_EQ(StoredText(u"f", u"Firewall User"), row.storedAfter);
    }
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
        EXPECT_EQ(StoredText(u"f", u"Firewall Password").View().starts_with(u"CAPI:"), text != readable)
            << "what cannot be read now stays as it is";
        panels.promptAnswer = u"new";
        panels.promptSaves = true;
        EXPECT_TRUE(firewall->GetPassword(&password));
        EXPECT_TRUE(SaveFirewall(*firewall));
        EXPECT_FALSE(StoredText(u"f", u"Firewall Password").View().starts_with(u"CAPI:")) << "nor comes back later";
    }
}

}  // namespace
}  // namespace connectdialog::test
