// Any text as a host with a port: what is split joins again, and an address reads the same from its own text.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "foundation/hostnames.h"
#include "fuzz/require.h"
#include "platform/codepage.h"

using namespace connectdialog;
using fuzz::Require;

namespace {

bool Has(const VUnicodeString& text, std::u16string_view characters) {
    return text.View().find_first_of(characters) != std::u16string_view::npos;
}

void TrySplit(const VUnicodeString& text) {
    VUnicodeString host(u"kept");
    std::uint16_t port = 7;
    if (!VSplitHostPort(text, host, port)) {
        Require(host == u"kept" && port == 7, "a failure leaves the outputs");
        return;
    }
    if (Has(host, u"[]")) return;
    VUnicodeString joined;
    joined.Format(Has(host, u":") ? u"[%1]:%2!hu!" : u"%1:%2!hu!", host, port);
    VUnicodeString hostAgain;
    std::uint16_t portAgain = 0;
    const bool isSplit = VSplitHostPort(joined, hostAgain, portAgain);
    Require(isSplit && hostAgain == host && portAgain == port, "what is joined splits again");
}

void TryAddress(const VUnicodeString& text) {
    Require(!Has(VSafeHostName(text), u":\\/"), "a name's host has no separators");
    const VRef<IInternetAddress> address = VMakeAddressFromText(text);
    if (!address) return;
    Require(VIsNumericHost(text), "an address is numeric");
    VUnicodeString written;
    Require(address->ToText(written, true), "an address has a text");
    const auto again = VRef<IInternetAddress>::Adopt(address->Clone());
    Require(again->SetFromHostPortText(written) && again->Equals(*address), "an address reads the same from its text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const VUnicodeString text(platform::ToWide({reinterpret_cast<const char*>(data), size}));
    TrySplit(text);
    TryAddress(text);
    VUnicodeString host;
    std::uint16_t port = 0;
    if (VSplitHostPort(text, host, port)) TryAddress(host);
    return 0;
}
