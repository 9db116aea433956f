#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "foundation/hostnames.h"
#include "foundation/vaddressipv4.h"
#include "foundation/vaddressipv6.h"
#include "foundation/vnarrowstring.h"

namespace connectdialog {
namespace {

using Bytes = std::vector<std::uint8_t>;

/// The address of a text; it may have a port.
VRef<IInternetAddress> Of(const char16_t* text) {
    VUnicodeString host;
    std::uint16_t port = 0;
    EXPECT_TRUE(VSplitHostPort(text, host, port));
    VRef<IInternetAddress> address = VMakeAddressFromText(host);
    EXPECT_TRUE(address && address->SetPort(port)) << VNarrowString(text).GetData();
    return address;
}

std::u16string TextOf(const IInternetAddress& address, bool withPort) {
    VUnicodeString text(u"before");
    const bool isWritten = address.ToText(text, withPort);
    EXPECT_EQ(isWritten, !text.IsEmpty());
    return std::u16string(text.View());
}

Bytes RecordOf(const IInternetAddress& address) {
    const std::uint8_t* record = nullptr;
    std::size_t length = 7;
    const bool isThere = address.GetSockaddr(record, length);
    EXPECT_EQ(isThere, record != nullptr);
    return {record, record + length};
}

TEST(HostNames, SplitIntoHostAndPort) {
    // The host is null where the text is refused.
    constexpr std::tuple<const char16_t*, const char16_t*, std::uint16_t> kRows[] = {
        {u"", u"", 0},
        {u"host", u"host", 0},
        {u"host: 22 ", u"host", 22},
        {u":22", u"", 22},
        {u"host:65535", u"host", 65535},
        {u"::1", u"::1", 0},
        {u"[::1]", u"::1", 0},
        {u"[::1]:22", u"::1", 22},
        {u"host:", nullptr, 0},
        {u"host:65536", nullptr, 0},
        {u"host:\u0661", nullptr, 0},
        {u"[::1", nullptr, 0},
        {u"::1]:22", nullptr, 0},
        {u"x[::1]:22", nullptr, 0},
        {u"]::1[:22", nullptr, 0},
        {u"[::1]:", nullptr, 0},
    };
    for (const auto& [text, expected, expectedPort] : kRows) {
        VUnicodeString host(u"kept");
        std::uint16_t port = 7;
        EXPECT_EQ(VSplitHostPort(text, host, port), expected != nullptr) << VNarrowString(text).GetData();
        EXPECT_EQ(host, expected != nullptr ? expected : u"kept") << VNarrowString(text).GetData();
        EXPECT_EQ(port, expected != nullptr ? expectedPort : 7) << VNarrowString(text).GetData();
    }
    VUnicodeString host;
    std::uint16_t port = 0;
    EXPECT_FALSE(VSplitHostPort(VUnicodeString(u"host:22\0x", 9), host, port));
}

TEST(HostNames, AddressesAreToldFromNames) {
    const struct {
        const char16_t* text;
        bool isDotted;
        platform::AddressFamily family;  ///< kAnyFamily: a name
        const char16_t* safeName;
    } rows[] = {
        {u"192.0.2.1", true, platform::kFamilyIpv4, u"192.0.2.1"},
        {u"255.255.255.255", true, platform::kFamilyIpv4, u"255.255.255.255"},
        {u"127.1", false, platform::kAnyFamily, u"127.1"},
        {u"1.2.3.4x", false, platform::kAnyFamily, u"1.2.3.4x"},
        {u"1x.2.3.4", true, platform::kAnyFamily, u"1x.2.3.4"},
        {u".1.2.3", false, platform::kAnyFamily, u".1.2.3"},
        {u"1.2.3.256", true, platform::kAnyFamily, u"1.2.3.256"},
        {u"1.2.3.4 x", false, platform::kAnyFamily, u"1.2.3.4 x"},
        {u"::1", false, platform::kFamilyIpv6, u"__1"},
        {u"2001:DB8:0:0:0:0:0:1", false, platform::kFamilyIpv6, u"2001_db8__1"},
        {u"[::1]", false, platform::kAnyFamily, u"[__1]"},
        {u"Host.Example", false, platform::kAnyFamily, u"host.example"},
        {u"DOM\\Host:a/b", false, platform::kAnyFamily, u"dom_host_a_b"},
        {nullptr, false, platform::kAnyFamily, u""},
    };
    for (const auto& row : rows) {
        const VNarrowString told(row.text);
        EXPECT_EQ(VIsDottedNumeric(row.text), row.isDotted) << told.GetData();
        auto family = platform::kAnyFamily;
        EXPECT_EQ(VIsNumericHost(row.text, &family), row.family != platform::kAnyFamily) << told.GetData();
        EXPECT_EQ(family, row.family) << told.GetData();
        EXPECT_EQ(VSafeHostName(row.text), row.safeName) << told.GetData();
    }
    EXPECT_FALSE(VIsNumericHost(VUnicodeString(u"1.2.3.4\0x", 9)));
    EXPECT_EQ(VSafeHostName(VUnicodeString(u"a\0b:C", 5)), VUnicodeString(u"a\0b_c", 5));
    EXPECT_FALSE(VMakeAddressFromText(u"255.255.255.255"));
}

TEST(InternetAddress, HasAShortTextAKindAndASuccessor) {
    enum Kind { kPlain, kAny, kLoopback };
    const std::tuple<const char16_t*, const char16_t*, const char16_t*, Kind> rows[] = {
        // What is read, its text and the next address.
        {u"0.0.0.0", u"0.0.0.0", u"0.0.0.1", kAny},
        {u"127.255.0.255", u"127.255.0.255", u"127.255.1.0", kLoopback},
        {u"0:0:0:0:0:0:0:0", u"::", u"::1", kAny},
        {u"::1", u"::1", u"::2", kLoopback},
        {u"1::", u"1::", u"1::1", kPlain},
        {u"2001:db8:0:1:1:1:1:1", u"2001:db8:0:1:1:1:1:1", u"2001:db8:0:1:1:1:1:2", kPlain},
        {u"2001:0:0:1:0:0:0:1", u"2001:0:0:1::1", u"2001:0:0:1::2", kPlain},
        {u"2001:db8:0:0:1:0:0:1", u"2001:db8::1:0:0:1", u"2001:db8::1:0:0:2", kPlain},
        {u"0:ffff:ffff:ffff:ffff:ffff:ffff:ffff", u"0:ffff:ffff:ffff:ffff:ffff:ffff:ffff", u"1::", kPlain},
        {u"::ffff:192.0.2.1", u"::ffff:c000:201", u"::ffff:c000:202", kPlain},
    };
    for (const auto& [read, text, next, kind] : rows) {
        const VRef<IInternetAddress> address = Of(read);
        EXPECT_EQ(TextOf(*address, false), text);
        EXPECT_TRUE(address->IsAny() == (kind == kAny) && address->IsLoopback() == (kind == kLoopback)) << kind;
        EXPECT_TRUE(address->Increment());
        EXPECT_EQ(TextOf(*address, false), next);
    }
    EXPECT_EQ(TextOf(*Of(u"192.0.2.1:65535"), true), u"192.0.2.1:65535");
    EXPECT_EQ(TextOf(*Of(u"[1::2]:22"), true), u"[1::2]:22");
    EXPECT_FALSE(Of(u"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff")->Increment());
    VAddressIPv4 last;
    const std::uint8_t ones[] = {255, 255, 255, 255};
    EXPECT_TRUE(last.SetRawAddress(ones, sizeof ones) && !last.Increment());
    EXPECT_EQ(TextOf(last, false), u"255.255.255.255");
}

TEST(InternetAddress, ComparesWithinItsFamily) {
    const struct {
        const char16_t* a;
        const char16_t* b;
        unsigned bits;
        bool areEqual;
        bool isLess;
        bool isInSubnet;
    } rows[] = {
        {u"192.0.2.1:22", u"192.0.2.1", 99, true, false, true},
        {u"192.0.2.1:22", u"192.0.2.1:23", 24, false, false, false},
        {u"192.0.2.127", u"192.0.2.128", 24, false, true, true},
        {u"192.0.2.127", u"192.0.2.128", 25, false, true, false},
        {u"9.0.0.0", u"10.0.0.0", 6, false, true, true},
        {u"9.0.0.0", u"10.0.0.0", 7, false, true, false},
        {u"0.0.0.1", u"::1", 0, false, false, false},
        {u"2001:db8::1", u"2001:db8::2", 64, false, true, true},
        {u"2001:db8::1", u"2001:db8:0:0:8000::", 65, false, true, false},
    };
    for (const auto& row : rows) {
        const VRef<IInternetAddress> a = Of(row.a);
        const VRef<IInternetAddress> b = Of(row.b);
        EXPECT_TRUE(a->Equals(*b) == row.areEqual && b->Equals(*a) == row.areEqual) << &row - rows;
        EXPECT_TRUE(a->IsLess(*b) == row.isLess && !b->IsLess(*a)) << &row - rows;
        EXPECT_EQ(a->IsInSubnet(*b, row.bits), row.isInSubnet) << &row - rows;
        EXPECT_EQ(b->IsInSubnet(*a, row.bits), row.isInSubnet) << &row - rows;
    }
}

TEST(InternetAddress, TravelsAsARecord) {
    const std::pair<const char16_t*, Bytes> rows[] = {
        {u"192.0.2.1:258", {2, 0, 1, 2, 192, 0, 2, 1, 0, 0, 0, 0, 0, 0, 0, 0}},
        {u"[2001:db8::1]:22",
         {23, 0, 0, 22, 0, 0, 0, 0, 0x20, 1, 0xD, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0}},
    };
    VAddressIPv4 v4;
    VAddressIPv6 v6;
    for (const auto& [text, record] : rows) {
        EXPECT_EQ(RecordOf(*Of(text)), record);
        IInternetAddress& fitting = record[0] == 2 ? static_cast<IInternetAddress&>(v4) : v6;
        IInternetAddress& other = record[0] == 2 ? static_cast<IInternetAddress&>(v6) : v4;
        EXPECT_TRUE(fitting.SetFromSockaddr(record.data(), record.size()));
        EXPECT_EQ(RecordOf(fitting), record);
        EXPECT_FALSE(other.SetFromSockaddr(record.data(), record.size()) ||
                     fitting.SetFromSockaddr(record.data(), record.size() - 1));
        EXPECT_EQ(RecordOf(fitting), Bytes()) << "what fails leaves no address behind";
    }
    VAddressIPv6 local;
    EXPECT_TRUE(local.SetFromText(u"fe80::1%1", 0));
    EXPECT_EQ(RecordOf(local)[24], 1);
    EXPECT_EQ(TextOf(local, false), u"fe80::1");
}

TEST(InternetAddress, AHostsListIsWalkedUpToItsEnd) {
    const std::uint8_t first[] = {192, 0, 2, 1};
    const std::uint8_t second[] = {192, 0, 2, 2};
    const std::uint8_t* const addresses[] = {first, second, nullptr};
    const VHostEntry entry{platform::kFamilyIpv4, 4, addresses};
    VAddressIPv4 address;
    EXPECT_TRUE(address.SetFromHostentPort(entry, 1, 22));
    EXPECT_EQ(TextOf(address, true), u"192.0.2.2:22");
    EXPECT_TRUE(address.SetFromHostent(entry, 0));
    EXPECT_EQ(TextOf(address, true), u"192.0.2.1:0");
    EXPECT_FALSE(address.SetFromHostent(entry, 2) || address.SetFromHostent(entry, 1000));
    EXPECT_FALSE(VAddressIPv6().SetFromHostent(entry, 0));
}

TEST(InternetAddress, WhatIsNotValidGivesNothing) {
    VAddressIPv4 v4;
    VAddressIPv6 v6;
    for (IInternetAddress* address : {static_cast<IInternetAddress*>(&v4), static_cast<IInternetAddress*>(&v6)}) {
        const std::uint8_t bytes[17] = {};
        for (const std::size_t length : {0U, 3U, 5U, 15U, 17U}) EXPECT_FALSE(address->SetRawAddress(bytes, length));
        for (const char16_t* text : {u"", u"localhost", u"255.255.255.255", u"1.2.3.4 x", u"[::1]"}) {
            EXPECT_FALSE(address->SetFromText(text, 22));
        }
        EXPECT_FALSE(address->SetFromHostPortText(u"1.2.3.4:65536"));
        EXPECT_FALSE(address->SetPort(22) || address->IsAny() || address->IsLoopback() || address->Increment());
        EXPECT_FALSE(address->Equals(*address) || address->IsInSubnet(*address, 0) || address->IsLess(*address));
        EXPECT_EQ(address->GetPort(), 0);
        EXPECT_EQ(TextOf(*address, true), u"");
        EXPECT_EQ(RecordOf(*address), Bytes());
    }
}

TEST(InternetAddress, ACloneIsAnObjectOfItsOwn) {
    const VRef<IInternetAddress> address = Of(u"[::1]:22");
    address->SetSocketKind(2, 17);
    const auto clone = VRef<IInternetAddress>::Adopt(address->Clone());
    EXPECT_TRUE(address->Increment() && address->SetPort(1));
    EXPECT_EQ(TextOf(*clone, true), u"[::1]:22");
    int protocol = 0;
    int type = clone->GetSocketType();
    clone->GetSocketKind(type, protocol);
    EXPECT_EQ(type * 100 + protocol, 217);
}

}  // namespace
}  // namespace connectdialog
