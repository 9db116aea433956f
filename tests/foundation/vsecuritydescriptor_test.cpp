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
    }
    for (const char16_t* text :
         {u"", u"S-1-5", u"S-1-5--1", u"S-1-5-1-", u"S-1-5-4294967296", u"S-1-0x1000000000000-1", u"S-2-5-1",
          u"S-1-5-1x", u"S-1-5-0x", u"S-1 -5-1", u"S-1-5-1-2-3-4-5-6-7-8-9-10-11-12-13-14-15-16"}) {
        VSid sid;
        EXPECT_FALSE(sid.LoadText(text) || sid.IsValid()) << Told(text);
        EXPECT_EQ(platform::GetLastErrorCode(), 1337U);
    }
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
    const Bytes rebuilt = descriptor.MakeSelfRelative();
    VSecurityDescriptor again;
    ASSERT_TRUE(again.LoadSelfRelative(rebuilt));
    EXPECT_TRUE(again.GetOwner() == SidOf(u"S-1-1-0") && again.GetGroup() == SidOf(u"S-1-2-3"));
    again.MakeAbsolute();
    EXPECT_EQ(again.MakeSelfRelative(), rebuilt);
    for (std::size_t length = 0; length < rebuilt.size(); ++length)
        EXPECT_FALSE(again.LoadSelfRelative(std::span(rebuilt).first(length))) << length;
    EXPECT_EQ(again.MakeSelfRelative(), rebuilt) << "what is damaged changes nothing";
    again.RemoveDacl();
    EXPECT_FALSE(again.HasDacl());
    EXPECT_FALSE(descriptor.SetOwner(VSid()));
    EXPECT_EQ(descriptor.GetLastReport()->GetCode(), 1337U);
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
        {Strings({u"root,allow,read fly", u"root,allow,write"}), "allow 2 S-1-22-1-0; ", u"\"root,allow,read fly\""},
        {Strings({u"root,permit,read", u"no such account,allow,read", u",allow,read"}), "",
         u"\"root,permit,read\", \"no such account,allow,read\", \",allow,read\""},
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
