#include "foundation/vsecuritydescriptor.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <string>
#include <vector>

#include "foundation/vaccountlookup.h"
#include "foundation/vnarrowstring.h"
#include "platform/accounts.h"
#include "platform/lasterror.h"
#include "support/strings.h"

namespace connectdialog {
namespace {

using test::Strings;
using Bytes = std::vector<std::uint8_t>;

constexpr AccessRight kRights[] = {{u"read", 1}, {u"write", 2}, {u"delete", 0x10000}, {nullptr, 0}};

std::string Told(const VUnicodeString& text) {
    return VNarrowString(text).GetData();
}

VSid SidOf(const char16_t* text) {
    VSid sid;
    EXPECT_TRUE(sid.LoadText(text)) << Told(text);
    return sid;
}

/// "allow 3 S-1-5-21-1; " for each entry.
std::string Told(const VAcl& list) {
    std::string told;
    VAclEntry entry;
    for (std::size_t i = 0; list.GetEntry(i, entry); ++i) {
        told += entry.type == 0 ? "allow " : entry.type == 1 ? "deny " : "type " + std::to_string(entry.type) + ' ';
        told += std::to_string(entry.mask) + ' ' + Told(entry.sid.ToText()) + "; ";
    }
    return told;
}

TEST(Sid, HasABinaryAndATextForm) {
    const std::tuple<const char16_t*, const char16_t*, Bytes> rows[] = {
        {u"S-1-1-0", u"S-1-1-0", {1, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0}},
        {u"s-1-5-32-544", u"S-1-5-32-544", {1, 2, 0, 0, 0, 0, 0, 5, 32, 0, 0, 0, 0x20, 2, 0, 0}},
        {u"S-1-0x0000000F-4294967295", u"S-1-15-4294967295", {1, 1, 0, 0, 0, 0, 0, 15, 255, 255, 255, 255}},
        {u"S-1-0x123456789ABC-1", u"S-1-0x123456789ABC-1", {1, 1, 0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 1, 0, 0, 0}},
    };
    for (const auto& [text, written, bytes] : rows) {
        const VSid sid = SidOf(text);
        EXPECT_EQ(Bytes(sid.GetBytes().begin(), sid.GetBytes().end()), bytes) << Told(text);
        EXPECT_EQ(sid.ToText(), written);
        VSid loaded;
        EXPECT_TRUE(loaded.Load(bytes) && loaded == sid);
        for (std::size_t length = 0; length < bytes.size(); ++length)
            EXPECT_FALSE(loaded.Load(std::span(bytes).first(length)));
        EXPECT_EQ(loaded, sid) << "what fails leaves the identifier";
    }
    for (const char16_t* text :
         {u"", u"S-1-5", u"S-1-5--1", u"S-1-5-1-", u"S-1-5-4294967296", u"S-1-0x1000000000000-1", u"S-2-5-1",
          u"S-1-5-1x", u"S-1-5-0x", u"S-1 -5-1", u"S-1-5-1-2-3-4-5-6-7-8-9-10-11-12-13-14-15-16"}) {
        VSid sid;
        EXPECT_FALSE(sid.LoadText(text) || sid.IsValid()) << Told(text);
        EXPECT_EQ(platform::GetLastErrorCode(), 1337U);
    }
    const std::uint32_t tooMany[16] = {};
    EXPECT_FALSE(VSid(1, tooMany).IsValid() || VSid(VSid::kMaxAuthority + 1, {}).IsValid() || VSid() == VSid());
    EXPECT_FALSE(VSid().Load(Bytes{2, 0, 0, 0, 0, 0, 0, 1}));
    Bytes tooLong(VSid::kMaxLength + 4);
    tooLong[0] = 1;
    tooLong[1] = 16;
    EXPECT_FALSE(VSid().Load(tooLong));
}

TEST(Acl, EntriesAreAddedExtendedAndRemoved) {
    const VSid alice = SidOf(u"S-1-5-21-1");
    const VSid bob = SidOf(u"S-1-5-21-2");
    VAcl list;
    EXPECT_EQ(Bytes(list.GetBytes().begin(), list.GetBytes().end()), (Bytes{2, 0, 8, 0, 0, 0, 0, 0}));
    EXPECT_TRUE(list.AddEntry(AccessKind::kAllow, 1, alice) && list.AddEntry(AccessKind::kDeny, 2, bob));
    EXPECT_TRUE(list.AddEntry(AccessKind::kAllow, 8, bob) && list.ExtendEntry(0, 4) && list.ExtendEntry(1, 16));
    EXPECT_EQ(Told(list), "allow 5 S-1-5-21-1; deny 18 S-1-5-21-2; allow 8 S-1-5-21-2; ");
    EXPECT_TRUE(list.RemoveEntry(1));
    EXPECT_EQ(Told(list), "allow 5 S-1-5-21-1; allow 8 S-1-5-21-2; ");
    const Bytes expected = {2, 0, 56, 0, 2, 0, 0, 0,                                                   //
                            0, 0, 24, 0, 5, 0, 0, 0, 1, 2, 0, 0, 0, 0, 0, 5, 21, 0, 0, 0, 1, 0, 0, 0,  //
                            0, 0, 24, 0, 8, 0, 0, 0, 1, 2, 0, 0, 0, 0, 0, 5, 21, 0, 0, 0, 2, 0, 0, 0};
    EXPECT_EQ(Bytes(list.GetBytes().begin(), list.GetBytes().end()), expected);
    EXPECT_FALSE(list.RemoveEntry(2) || list.ExtendEntry(2, 1));
    EXPECT_EQ(platform::GetLastErrorCode(), 87U);
    EXPECT_FALSE(list.AddEntry(AccessKind::kAllow, 1, VSid()));
    EXPECT_EQ(platform::GetLastErrorCode(), 1337U);
    while (list.AddEntry(AccessKind::kAllow, 1, alice)) continue;
    EXPECT_EQ(platform::GetLastErrorCode(), 1344U);
    EXPECT_EQ(list.GetCount(), (65535U - 8) / 24);
    EXPECT_TRUE(VAcl().Load(list.GetBytes()));
}

TEST(Acl, WhatItDoesNotKnowIsCarriedAlongAndWhatIsDamagedRefused) {
    const Bytes good = {4, 0, 44, 0, 2, 0, 0, 0,                                      //
                        5, 3, 8,  0, 1, 2, 3, 4,                                      // an entry of another kind
                        1, 0, 20, 0, 7, 0, 0, 0, 1, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0,  //
                        9, 9, 9,  9, 9, 9, 9, 9};                                     // unused room
    VAcl list;
    ASSERT_TRUE(list.Load(good));
    EXPECT_EQ(Bytes(list.GetBytes().begin(), list.GetBytes().end()), good);
    EXPECT_EQ(Told(list), "type 5 0 ; deny 7 S-1-1-0; ");
    EXPECT_TRUE(!list.ExtendEntry(0, 8) && list.ExtendEntry(1, 8));
    EXPECT_TRUE(list.AddEntry(AccessKind::kAllow, 1, SidOf(u"S-1-1-0")));
    EXPECT_EQ(Told(list), "type 5 0 ; deny 15 S-1-1-0; allow 1 S-1-1-0; ");
    EXPECT_EQ(list.GetBytes().size(), 56U);
    const std::pair<std::size_t, std::uint8_t> faults[] = {{0, 1},   {0, 5},  {2, 7},  {2, 45}, {2, 20}, {3, 1},
                                                           {4, 3},   {5, 1},  {10, 3}, {10, 0}, {18, 7}, {18, 19},
                                                           {18, 29}, {24, 2}, {25, 2}, {25, 16}};
    for (const auto& [offset, value] : faults) {
        Bytes bytes = good;
        bytes[offset] = value;
        EXPECT_FALSE(VAcl().Load(bytes)) << offset << ' ' << int{value};
        EXPECT_EQ(platform::GetLastErrorCode(), 1336U);
    }
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_FALSE(VAcl().Load(std::span(good).first(length)));
}

/// Everybody's number is 12 bytes, an empty list 8; they lie behind the header in another order than ours.
const Bytes kForeign = {1, 7, 0x17, 0xC0, 40, 0, 0, 0, 0, 0, 0, 0, 20, 0, 0, 0, 28, 0, 0, 0,  //
                        2, 0, 8,    0,    0,  0, 0, 0,                                        // SACL
                        2, 0, 8,    0,    0,  0, 0, 0,                                        // DACL
                        9, 9, 9,    9,                                                        // nobody's
                        1, 1, 0,    0,    0,  0, 0, 1, 0, 0, 0, 0};                           // owner

TEST(SecurityDescriptor, WhatIsLoadedComesBackByteForByteUntilItIsChanged) {
    VSecurityDescriptor descriptor;
    ASSERT_TRUE(descriptor.LoadSelfRelative(kForeign));
    EXPECT_TRUE(descriptor.IsSelfRelative());
    EXPECT_EQ(descriptor.MakeSelfRelative(), kForeign);
    EXPECT_EQ(descriptor.GetOwner(), SidOf(u"S-1-1-0"));
    EXPECT_FALSE(descriptor.GetGroup().IsValid());
    ASSERT_NE(descriptor.GetDacl(), nullptr);
    EXPECT_EQ(descriptor.GetDacl()->GetCount(), 0U);

    EXPECT_TRUE(descriptor.SetGroup(SidOf(u"S-1-2-3")));
    EXPECT_FALSE(descriptor.IsSelfRelative());
    const Bytes rebuilt = {1, 7, 0x15, 0xC0, 20, 0, 0, 0, 32, 0, 0, 0, 44, 0, 0, 0, 52, 0, 0, 0,  //
                           1, 1, 0,    0,    0,  0, 0, 1, 0,  0, 0, 0,                            //
                           1, 1, 0,    0,    0,  0, 0, 2, 3,  0, 0, 0,                            //
                           2, 0, 8,    0,    0,  0, 0, 0, 2,  0, 8, 0, 0,  0, 0, 0};
    EXPECT_EQ(descriptor.MakeSelfRelative(), rebuilt);
    EXPECT_FALSE(descriptor.SetOwner(VSid()));
    EXPECT_EQ(descriptor.GetLastReport()->GetCode(), 1337U);
    VSecurityDescriptor again;
    ASSERT_TRUE(again.LoadSelfRelative(rebuilt));
    again.MakeAbsolute();
    EXPECT_EQ(again.MakeSelfRelative(), rebuilt);
}

TEST(SecurityDescriptor, NoListANullListAndAnEmptyListAreThreeThings) {
    VSecurityDescriptor descriptor;
    const VAcl empty;
    const struct {
        const VAcl* list;
        bool isPresent;
        std::uint8_t control;
        std::size_t length;
    } rows[] = {{nullptr, false, 0, 20}, {nullptr, true, 4, 20}, {&empty, true, 4, 28}};
    for (const auto& row : rows) {
        descriptor.SetDacl(row.list);
        if (!row.isPresent) descriptor.RemoveDacl();
        const Bytes bytes = descriptor.MakeSelfRelative();
        EXPECT_EQ(bytes.size(), row.length);
        EXPECT_EQ(bytes[2], row.control);
        VSecurityDescriptor loaded;
        ASSERT_TRUE(loaded.LoadSelfRelative(bytes));
        EXPECT_EQ(loaded.HasDacl(), row.isPresent);
        EXPECT_EQ(loaded.GetDacl() != nullptr, row.list != nullptr);
    }
}

TEST(SecurityDescriptor, DamagedBytesAreRefusedAndNothingChanges) {
    VSecurityDescriptor descriptor;
    ASSERT_TRUE(descriptor.LoadSelfRelative(kForeign));
    const std::pair<std::size_t, std::uint8_t> faults[] = {
        {0, 0},   {0, 2},   {3, 0x40}, {4, 19},   {4, 1},  {4, 52},   {4, 255}, {7, 1},  {8, 20}, {11, 255}, {12, 19},
        {12, 36}, {16, 51}, {16, 1},   {19, 128}, {20, 9}, {22, 255}, {28, 0},  {32, 1}, {40, 0}, {41, 2}};
    for (const auto& [offset, value] : faults) {
        Bytes bytes = kForeign;
        bytes[offset] = value;
        EXPECT_FALSE(descriptor.LoadSelfRelative(bytes)) << offset << ' ' << int{value};
        EXPECT_EQ(descriptor.GetLastReport()->GetCode(), 1338U);
    }
    for (std::size_t length = 0; length < kForeign.size(); ++length) {
        EXPECT_FALSE(descriptor.LoadSelfRelative(std::span(kForeign).first(length))) << length;
    }
    EXPECT_EQ(descriptor.MakeSelfRelative(), kForeign);
}

TEST(SecurityRules, MakeEntriesInTheirOrder) {
    // The rules, the entries they make, and the rules that are refused.
    const std::tuple<VStringArray, std::string, std::u16string> rows[] = {
        {Strings({}), "", u""},
        {Strings({u"root,ALLOW,Read WRITE"}), "allow 3 S-1-22-1-0; ", u""},
        {Strings({u"root,deny, read  write "}), "deny 3 S-1-22-1-0; ", u""},
        {Strings(
             {u"root,allow,read", u"localhost\\root,allow,write", u"root,deny,delete", u"root@LOCALHOST,deny,read"}),
         "allow 3 S-1-22-1-0; deny 65537 S-1-22-1-0; ", u""},
        {Strings({u"S-1-1-0,allow,", u"s-1-1-0,allow,write"}), "allow 2 S-1-1-0; ", u""},
        {Strings({u"root,allow,read fly", u"root,allow,write"}), "allow 2 S-1-22-1-0; ", u"\"root,allow,read fly\""},
        {Strings({u"root,permit,read", u"no such account,allow,read", u",allow,read"}), "",
         u"\"root,permit,read\", \"no such account,allow,read\", \",allow,read\""},
        {Strings({u"", u"root", u"root,allow", u"root,allow,read,", u"root, allow,read"}), "",
         u"\"\", \"root\", \"root,allow\", \"root,allow,read,\", \"root, allow,read\""},
    };
    for (const auto& [rules, entries, refused] : rows) {
        VAccountLookup lookup;
        VSecurityDescriptor descriptor(kRights, &lookup);
        ASSERT_TRUE(descriptor.LoadSelfRelative(kForeign));
        EXPECT_EQ(descriptor.LoadRules(rules), refused.empty());
        ASSERT_NE(descriptor.GetDacl(), nullptr) << "an empty list, not the null one";
        EXPECT_EQ(Told(*descriptor.GetDacl()), entries);
        EXPECT_FALSE(descriptor.GetOwner().IsValid()) << "rules tell of nothing else";
        const VReportMessageParams& report = *descriptor.GetLastReport();
        EXPECT_EQ(report.GetCode(), refused.empty() ? 0U : 13U);
        const std::u16string told = report.GetInsertCount() > 0 ? report.GetInserts()[0] : u"";
        EXPECT_EQ(told, refused);
    }
}

TEST(SecurityRules, StopWhereTheListIsFull) {
    VSecurityDescriptor descriptor(kRights);
    VStringArray rules;
    for (int i = 0; i < 4000; ++i) {
        VUnicodeString rule;
        rule.Format(u"S-1-7-%1!d!,allow,read", i);
        rules.Add(rule);
    }
    EXPECT_FALSE(descriptor.LoadRules(rules));
    EXPECT_EQ(descriptor.GetDacl()->GetCount(), (65535U - 8) / 20);
    VSecurityDescriptor withoutHelp;
    EXPECT_FALSE(withoutHelp.LoadRules(Strings({u"root,allow,"})) ||
                 withoutHelp.LoadRules(Strings({u"S-1-1-0,deny,read"})));
    EXPECT_TRUE(withoutHelp.LoadRules(Strings({u"S-1-1-0,deny,"})));
}

TEST(Accounts, AreLookedUpAmongTheUsersAndGroupsOfTheSystem) {
    const VUnicodeString here(platform::GetHostName());
    VAccountLookup lookup;
    VSid sid;
    for (const VUnicodeString& name : {VUnicodeString(u"root"), here + u"\\root", u"root@" + here}) {
        sid = VSid();
        EXPECT_TRUE(lookup.Resolve(name, sid)) << Told(name);
        EXPECT_EQ(sid.ToText(), u"S-1-22-1-0");
    }
    const group* const tty = getgrnam("tty");
    ASSERT_TRUE(tty != nullptr && getpwnam("tty") == nullptr) << "a group that no user shares its name with";
    const std::uint32_t ttyNumbers[] = {2, tty->gr_gid};
    EXPECT_TRUE(lookup.Resolve(u"tty", sid));
    EXPECT_EQ(sid, VSid(22, ttyNumbers));
    for (const char16_t* name : {u"", u"no such account", u"elsewhere\\root", u"\\", u"ro\xD800ot"}) {
        EXPECT_FALSE(lookup.Resolve(name, sid)) << Told(name);
        EXPECT_EQ(platform::GetLastErrorCode(), 1332U);
    }
    EXPECT_FALSE(lookup.Resolve(VUnicodeString(u"root\0x", 6), sid));
    EXPECT_EQ(sid, VSid(22, ttyNumbers)) << "what fails leaves the identifier";
}

}  // namespace
}  // namespace connectdialog
