#include "tools/connectctl/settingvalue.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "profile/vprofile.h"
#include "profile/vprofile2.h"
#include "tools/connectctl/nearnames.h"

namespace connectdialog::connectctl {
namespace {

TEST(SettingValue, ASecretIsNeitherShownNorTaken) {
    struct Enciphered : VProfileText {
    } secret;
    secret.SetName(u"Password"_v);
    secret.Set(u"hunter2"_v);
    EXPECT_EQ(GetSettingText(secret), kHidden);
    const Failure failure = SetSettingText(secret, u"other");
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->find("hunter2"), std::string::npos);
    EXPECT_EQ(secret.Get(), u"hunter2");

    VProfileText userName;
    userName.Edit().MarkSensitive();
    userName.Set(u"root"_v);
    EXPECT_EQ(GetSettingText(userName), "root");
}

TEST(SettingValue, SmallNumbersHaveTheirOwnRange) {
    VProfile<short> number;
    VProfile<unsigned short> port;
    EXPECT_FALSE(SetSettingText(number, u"-32768"));
    EXPECT_TRUE(SetSettingText(number, u"32768"));
    EXPECT_EQ(number.Get(), -32768);
    EXPECT_FALSE(SetSettingText(port, u"65535"));
    EXPECT_TRUE(SetSettingText(port, u"65536"));
    EXPECT_TRUE(SetSettingText(port, u"0x10"));
    EXPECT_EQ(GetSettingRange(port), "0 to 65535");
    EXPECT_EQ(GetSettingJson(port), 65535);
}

TEST(SettingValue, ARecordHasNoText) {
    struct Opaque : VProfileBinary {
        void Save(VProfileKey&, bool) override {}
        bool IsChanged() const override { return false; }
        void Commit() override {}
        void Revert() override {}
        void Assign(const VProfileData&) override {}
        VProfileData* GetMember(std::size_t) override { return this; }
    } record;
    EXPECT_STREQ(GetSettingType(record), "record");
    EXPECT_EQ(GetSettingText(record), "(record)");
    EXPECT_TRUE(SetSettingText(record, u"x"));
}

TEST(NearNames, AreTheFewNearest) {
    const std::vector<std::u16string> names = {u"Hostname",   u"Username", u"Title Bar",   u"Use Title Bar",
                                               u"Log Prompt", u"Log Mode", u"Log Filename"};
    EXPECT_EQ(FindNearNames(u"hostnmae", names), (std::vector<std::u16string>{u"Hostname"}));
    EXPECT_EQ(FindNearNames(u"title bar ", names), (std::vector<std::u16string>{u"Title Bar"}));
    EXPECT_EQ(FindNearNames(u"log", names), (std::vector<std::u16string>{u"Log Mode", u"Log Prompt", u"Log Filename"}));
    EXPECT_TRUE(FindNearNames(u"completely different", names).empty());
    EXPECT_TRUE(FindNearNames(u"", names).empty());
    EXPECT_TRUE(FindNearNames(std::u16string(10000, u'H'), names).empty());
}

}  // namespace
}  // namespace connectdialog::connectctl
