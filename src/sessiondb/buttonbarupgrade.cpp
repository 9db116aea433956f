#include "sessiondb/buttonbarupgrade.h"

#include "foundation/vstringarray.h"
#include "menutoolbar/profileuserbuttonmap.h"
#include "profile/iprofilestore.h"
#include "profile/vprofilekey.h"

namespace connectdialog {

namespace {
constexpr char16_t kFormerKey[] = u"ButtonBarV2";
constexpr char16_t kFirstKey[] = u"ButtonBar";
constexpr char16_t kDefaultBar[] = u"Default";
}  // namespace

void UpgradeButtonBars() {
    VProfileStore store;
    VProfileKey* root = store.GetRootKey();
    if (root->KeyExists(kButtonBarsKey)) return;
    const char16_t* const source = root->KeyExists(kFormerKey) ? kFormerKey : kFirstKey;
    VStringArray names;
    EnumerateButtonBars(source, names);
    VProfileKey from(root, source, 0);
    VProfileKey to(root, kButtonBarsKey, 0);
    for (const VUnicodeString& name : names) {
        const auto bar = VRef<ProfileUserButtonMap>::Adopt(new ProfileUserButtonMap);
        bar->LoadButtons(&from, name);
        bar->Save(to, true);
    }
}

void EnumerateButtonBars(const char16_t* source, VStringArray& names) {
    VProfileStore store(true);
    VProfileKey key(store.GetRootKey(), source, 0);
    VProfileKeyIterator children(key, true);
    bool hasDefault = false;
    VUnicodeString name;
    std::uint32_t kind = 0;
    while (children.NextWithKind(name, kind)) {
        if (kind != static_cast<std::uint32_t>(ProfileKind::kListEntry)) continue;
        hasDefault = hasDefault || name == kDefaultBar;
        names.Add(name);
    }
    if (!hasDefault) names.Add(VUnicodeString(kDefaultBar));
}

}  // namespace connectdialog
