#include "platform/numericaddress.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>

#include "platform/codepage.h"
#include "platform/lasterror.h"

namespace connectdialog::platform {

namespace {

/// More than the longest address with the longest name of a zone has.
constexpr std::size_t kMaxTextLength = 255;

struct AddressList {
    void operator()(addrinfo* list) const { freeaddrinfo(list); }
};
using ResolvedAddresses = std::unique_ptr<addrinfo, AddressList>;

int NativeFamily(AddressFamily family) {
    if (family == kAnyFamily) return AF_UNSPEC;
    return family == kFamilyIpv4 ? AF_INET : AF_INET6;
}

ResolvedAddresses AskResolver(const std::string& text, AddressFamily family) {
    addrinfo hints{};
    hints.ai_flags = AI_NUMERICHOST;
    hints.ai_family = NativeFamily(family);
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* list = nullptr;
    if (getaddrinfo(text.c_str(), nullptr, &hints, &list) != 0) list = nullptr;
    return ResolvedAddresses(list);
}

/// The record that the resolver gave. It is copied out: a list's record promises no alignment for its real type.
template <class Record>
Record RecordOf(const addrinfo& found) {
    Record record{};
    std::memcpy(&record, found.ai_addr, std::min<std::size_t>(sizeof(record), found.ai_addrlen));
    return record;
}

}  // namespace

bool ReadNumericAddress(std::u16string_view text, AddressFamily family, NumericAddress& address) {
    if (text.empty() || text.size() > kMaxTextLength || text.find(u'\0') != text.npos) {
        return FailWith(kInvalidParameter);
    }
    const ResolvedAddresses found = AskResolver(ToNarrow(text), family);
    if (found == nullptr || found->ai_addr == nullptr) return FailWith(kInvalidParameter);
    NumericAddress read;
    if (found->ai_family == AF_INET) {
        const auto record = RecordOf<sockaddr_in>(*found);
        read.family = kFamilyIpv4;
        std::memcpy(read.bytes.data(), &record.sin_addr, sizeof(record.sin_addr));
    } else if (found->ai_family == AF_INET6) {
        const auto record = RecordOf<sockaddr_in6>(*found);
        read.family = kFamilyIpv6;
        std::memcpy(read.bytes.data(), &record.sin6_addr, sizeof(record.sin6_addr));
        read.scope = record.sin6_scope_id;
    } else {
        return FailWith(kInvalidParameter);
    }
    address = read;
    return true;
}

}  // namespace connectdialog::platform
