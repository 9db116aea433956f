#include <gtest/gtest.h>
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

VUnicodeString TextOf(const IInternetAddress& address, bool withPort) {
    VUnicodeString text(u"before");
    const bool isWritten = address.ToText(text, withPort);
    EXPECT_EQ(isWritten, !text.IsEmpty());
    return text;
}

Bytes RecordOf(const IInternetAddress& address) {
    const std::uint8_t* record = nullptr;
    std::size_t length = 7;
    const bool isThere = address.GetSockaddr(record, length);
    EXPECT_EQ(isThere, record != nullptr);
    return {record, record + length};
}

TEST(HostNames, AddressesAreToldFromNames) {
    const std::tuple<const char16_t*, bool, platform::AddressFamily, const char16_t*> rows[] = {
        // The text, whether it is dotted, its family (any: a name), and its safe name.
        {u"255.255.255.255", true, platform::kFamilyIpv4, u"255.255.255.255"},
        {u"127.1", false, platform::kAnyFamily, u"127.1"},
        {u"1x.2.3.4", true, platform::kAnyFamily, u"1x.2.3.4"},
        {u"1.2.3.256", true, platform::kAnyFamily, u"1.2.3.256"},
        {u"2001:DB8:0:0:0:0:0:1", false, platform::kFamilyIpv6, u"2001_db8__1"},
        {u"DOM\\Host:a/b", false, platform::kAnyFamily, u"dom_host_a_b"},
        {nullptr, false, platform::kAnyFamily, u""},
    };
    for (const auto& [text, isDotted, expectedFamily, safeName] : rows) {
        auto family = platform::kAnyFamily;
        EXPECT_EQ(VIsDottedNumeric(text), isDotted) << VNarrowString(safeName).GetData();
        EXPECT_EQ(VIsNumericHost(text, &family), expectedFamily != platform::kAnyFamily)
            << VNarrowString(safeName).GetData();
        EXPECT_EQ(family, expectedFamily) << VNarrowString(safeName).GetData();
        EXPECT_EQ(VSafeHostName(text), safeName);
    }
    EXPECT_FALSE(VIsNumericHost(VUnicodeString(u"1.2.3.4\0x", 9)));
    EXPECT_FALSE(VMakeAddressFromText(u"255.255.255.255"));
}

TEST(InternetAddress, HasAShortTextAKindAndASuccessor) {
    enum Kind { kPlain, kAny, kLoopback };
    const std::tuple<const char16_t*, const char16_t*, const char16_t*, Kind> rows[] = {
        // What is read, its text and the next address.
        {u"0.0.0.0:65535", u"0.0.0.0:65535", u"0.0.0.1", kAny},
        {u"127.255.0.255", u"127.255.0.255:0", u"127.255.1.0", kLoopback},
        {u"[::1]:22", u"[::1]:22", u"::2", kLoopback},
        {u"2001:0:0:1:0:0:0:1", u"[2001:0:0:1::1]:0", u"2001:0:0:1::2", kPlain},
        {u"2001:db8:0:0:1:0:0:1", u"[2001:db8::1:0:0:1]:0", u"2001:db8::1:0:0:2", kPlain},
        {u"0:ffff:ffff:ffff:ffff:ffff:ffff:ffff", u"[0:ffff:ffff:ffff:ffff:ffff:ffff:ffff]:0", u"1::", kPlain},
        {u"::ffff:192.0.2.1", u"[::ffff:c000:201]:0", u"::ffff:c000:202", kPlain},
    };
    for (const auto& [read, text, next, kind] : rows) {
        const VRef<IInternetAddress> address = Of(read);
        EXPECT_TRUE(address->IsAny() == (kind == kAny) && address->IsLoopback() == (kind == kLoopback)) << kind;
        const auto clone = VRef<IInternetAddress>::Adopt(address->Clone());
        address->SetSocketKind(2, 17);
        EXPECT_TRUE(address->Increment() && address->GetSocketType() == 2);
        EXPECT_EQ(TextOf(*address, false), next);
        EXPECT_EQ(TextOf(*clone, true), text);
    }
    EXPECT_FALSE(Of(u"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff")->Increment());
}

TEST(InternetAddress, ComparesWithinItsFamily) {
    const std::tuple<const char16_t*, const char16_t*, unsigned, bool, bool, bool> rows[] = {
        // Two addresses, the bits of a subnet; whether they are equal, the first is less, both are in the subnet.
        {u"192.0.2.1:22", u"192.0.2.1", 99, true, false, true},
        {u"192.0.2.127", u"192.0.2.128", 24, false, true, true},
        {u"192.0.2.127", u"192.0.2.128", 25, false, true, false},
        {u"9.0.0.0", u"10.0.0.0", 6, false, true, true},
        {u"0.0.0.1", u"::1", 0, false, false, false},
        {u"2001:db8::1", u"2001:db8:0:0:8000::", 65, false, true, false},
    };
    for (const auto& [first, second, bits, areEqual, isLess, areInSubnet] : rows) {
        const VRef<IInternetAddress> a = Of(first);
        const VRef<IInternetAddress> b = Of(second);
        EXPECT_TRUE(a->Equals(*b) == areEqual && b->Equals(*a) == areEqual);
        EXPECT_TRUE(a->IsLess(*b) == isLess && !b->IsLess(*a));
        EXPECT_TRUE(a->IsInSubnet(*b, bits) == areInSubnet && b->IsInSubnet(*a, bits) == areInSubnet);
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
        EXPECT_FALSE(fitting.SetFromText(u"1.2.3.4 x", 22) || fitting.SetFromHostPortText(u"1.2.3.4:65536"));
        EXPECT_FALSE(fitting.SetRawAddress(record.data(), 3) || fitting.SetPort(22) || fitting.IsAny() ||
                     fitting.Increment() || fitting.Equals(fitting));
        EXPECT_EQ(TextOf(fitting, true), u"");
    }
    const std::uint8_t host[] = {192, 0, 2, 1};
    const std::uint8_t* const addresses[] = {host, host, nullptr};
    const VHostEntry entry{platform::kFamilyIpv4, 4, addresses};
    EXPECT_TRUE(v4.SetFromHostentPort(entry, 1, 22));
    EXPECT_EQ(TextOf(v4, true), u"192.0.2.1:22");
    EXPECT_TRUE(v4.SetRawAddress(addresses[1], 4) && v4.GetPort() == 22);
    EXPECT_FALSE(v4.SetFromHostent(entry, 2) || v4.SetFromHostent(entry, 1000) || v6.SetFromHostent(entry, 0));
}

}  // namespace
}  // namespace connectdialog
