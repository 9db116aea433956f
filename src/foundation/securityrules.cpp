#include "foundation/securityrules.h"

#include <map>
#include <string>
#include <utility>

#include "foundation/iaccountresolver.h"
#include "foundation/texttools.h"
#include "foundation/vaccountlookup.h"

namespace connectdialog {

namespace {

/// The words of the second field, by the kind of entry that they make.
struct KindWord {
    const char16_t* word;
    AccessKind kind;
};
constexpr KindWord kKindWords[] = {{u"allow", AccessKind::kAllow}, {u"deny", AccessKind::kDeny}};

bool ReadKind(const VUnicodeString& word, AccessKind& kind) {
    for (const KindWord& row : kKindWords) {
        if (!word.EqualsNoCase(row.word)) continue;
        kind = row.kind;
        return true;
    }
    return false;
}

/// Adds the mask of one name.
bool AddRight(const VUnicodeString& name, const AccessRight* rights, std::uint32_t& mask) {
    if (name.IsEmpty()) return true;  // between two blanks
    for (; rights != nullptr && rights->name != nullptr; ++rights) {
        if (!name.EqualsNoCase(rights->name)) continue;
        mask |= rights->mask;
        return true;
    }
    return false;
}

bool ReadRights(const VUnicodeString& names, const AccessRight* rights, std::uint32_t& mask) {
    VStringArray list;
    VSplitOnChar(names, list, u' ');
    mask = 0;
    for (const VUnicodeString& name : list) {
        if (!AddRight(name, rights, mask)) return false;
    }
    return true;
}

/// Identifiers by normalised name: an account that many rules name is looked up once.
class KnownAccounts {
  public:
    explicit KnownAccounts(IAccountResolver* resolver) : resolver(resolver) {}

    bool Find(const VUnicodeString& name, VSid& sid) {
        const VUnicodeString account = VNormalizeAccount(name);
        const auto found = known.find(account.View());
        if (found != known.end()) {
            sid = found->second;
            return true;
        }
        if (!sid.LoadText(account) && (resolver == nullptr || !resolver->Resolve(account, sid))) return false;
        known.emplace(account.View(), sid);
        return true;
    }

  private:
    IAccountResolver* resolver;
    std::map<std::u16string, VSid, std::less<>> known;
};

/// The list that rules make: one entry for each kind and account.
class RuleList {
  public:
    explicit RuleList(VAcl& list) : list(list) {}

    bool Extend(AccessKind kind, std::uint32_t mask, const VSid& sid) {
        Key key(kind, {sid.GetBytes().begin(), sid.GetBytes().end()});
        const auto found = entries.find(key);
        if (found != entries.end()) return list.ExtendEntry(found->second, mask);
        if (!list.AddEntry(kind, mask, sid)) return false;
        entries.emplace(std::move(key), list.GetCount() - 1);
        return true;
    }

  private:
    using Key = std::pair<AccessKind, std::vector<std::uint8_t>>;

    VAcl& list;
    std::map<Key, std::size_t> entries;  ///< indices in the list
};

bool AddRule(const VUnicodeString& rule, const AccessRight* rights, KnownAccounts& accounts, RuleList& list) {
    VStringArray fields;
    VSplitOnChar(rule, fields, u',');
    AccessKind kind{};
    std::uint32_t mask = 0;
    VSid sid;
    return fields.GetCount() == 3 && ReadKind(fields[1], kind) && ReadRights(fields[2], rights, mask) &&
           accounts.Find(fields[0], sid) && list.Extend(kind, mask, sid);
}

}  // namespace

VUnicodeString MakeList(const VStringArray& rules, const AccessRight* rights, IAccountResolver* resolver, VAcl& list) {
    list = VAcl();
    RuleList ruleList(list);
    KnownAccounts accounts(resolver);
    std::u16string refused;  // grows in steps: there may be many
    for (const VUnicodeString& rule : rules) {
        if (AddRule(rule, rights, accounts, ruleList)) continue;
        refused.append(refused.empty() ? u"\"" : u", \"").append(rule.View()) += u'"';
    }
    return VUnicodeString(refused);
}

}  // namespace connectdialog
