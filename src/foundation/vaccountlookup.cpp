#include "foundation/vaccountlookup.h"

#include <algorithm>

#include "foundation/casefold.h"

namespace connectdialog {

namespace {

constexpr std::uint64_t kUnixAuthority = 22;
constexpr std::uint32_t kUnixUsers = 1;
constexpr std::uint32_t kUnixGroups = 2;

}  // namespace

void VSplitAccount(const VUnicodeString& name, VUnicodeString& domain, VUnicodeString& user) {
    // `name` may be one of the outputs: what is needed of it is taken before that one is written.
    const std::size_t backslash = name.FindChar(u'\\');
    const std::size_t at = name.FindChar(u'@');
    if (backslash != VUnicodeString::kNotFound) {
        const VUnicodeString rest = name.Mid(backslash + 1);
        domain = name.Left(backslash);
        user = rest;
    } else if (at != VUnicodeString::kNotFound) {
        const VUnicodeString rest = name.Mid(at + 1);
        user = name.Left(at);
        domain = rest;
    } else {
        user = name;
        domain.Empty();
    }
}

VUnicodeString VNormalizeAccount(const VUnicodeString& name) {
    VUnicodeString domain;
    VUnicodeString user;
    VSplitAccount(name, domain, user);
    if (!domain.EqualsNoCase(u"localhost")) return name;
    return VUnicodeString(platform::GetHostName()) + u'\\' + user;
}

VSid MakeAccountSid(const platform::Account& account) {
    const std::uint32_t kind = account.kind == platform::Account::Kind::kUser ? kUnixUsers : kUnixGroups;
    const std::uint32_t subAuthorities[] = {kind, account.id};
    return VSid(kUnixAuthority, subAuthorities);
}

bool VAccountLookup::Resolve(const VUnicodeString& name, VSid& sid) {
    VUnicodeString domain;
    VUnicodeString user;
    VSplitAccount(name, domain, user);
    const bool isLocal = domain.EqualsNoCase(platform::GetHostName());
    platform::Account account;
    if (!platform::FindAccount(isLocal ? user : name, account)) return false;
    sid = MakeAccountSid(account);
    return true;
}

}  // namespace connectdialog
