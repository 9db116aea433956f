// Any lines as access rules: the list that they make is valid, and the same rules once more change nothing.
#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "foundation/iaccountresolver.h"
#include "foundation/securityrules.h"
#include "foundation/texttools.h"
#include "foundation/vaccountlookup.h"
#include "fuzz/require.h"
#include "platform/codepage.h"

using namespace connectdialog;
using fuzz::Require;

namespace {

constexpr AccessRight kRights[] = {{u"read", 1}, {u"write", 2}, {u"all", 0xFFFFFFFF}, {nullptr, 0}};

/// Knows every name that has no blank, by the sum of its characters: some names are of one account.
struct Resolver : IAccountResolver {
    bool Resolve(const VUnicodeString& name, VSid& sid) override {
        if (name.IsEmpty() || name.FindChar(u' ') != VUnicodeString::kNotFound) return false;
        const std::uint32_t subAuthorities[] = {21, VStringHash(name)};
        sid = VSid(5, subAuthorities);
        return true;
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = platform::ToWide({reinterpret_cast<const char*>(data), size});
    VStringArray rules;
    VSplitOnChar(text, rules, u'\n');
    Resolver resolver;
    VAcl once;
    const VUnicodeString refused = MakeList(rules, kRights, &resolver, once);
    Require(VAcl().Load(once.GetBytes()), "the list is valid");
    Require(once.GetCount() <= rules.GetCount(), "a rule makes one entry at most");

    VStringArray doubled(rules);
    doubled.Append(rules);
    VAcl twice;
    const VUnicodeString refusedTwice = MakeList(doubled, kRights, &resolver, twice);
    Require(std::ranges::equal(once.GetBytes(), twice.GetBytes()), "the same rules once more change nothing");
    const VUnicodeString expected = refused.IsEmpty() ? refused : refused + u", " + refused;
    Require(refusedTwice == expected, "the same rules are refused once more");

    VUnicodeString domain;
    VUnicodeString user;
    VSplitAccount(VUnicodeString(text), domain, user);
    Require(domain.GetLength() + user.GetLength() + 1 >= text.size(), "at most one sign is left out of a name");
    return 0;
}
