#include "sessiondb/buttonbarupgrade.h"

#include "foundation/vreportmessageparams.h"
#include "foundation/vstringarray.h"
#include "menutoolbar/profileuserbuttonmap.h"
#include "platform/lasterror.h"
#include "profile/iprofilestore.h"
#include "profile/unitofwork.h"
#include "profile/vprofilekey.h"

namespace connectdialog {

namespace {
constexpr char16_t kFormerKey[] = u"ButtonBarV2";
constexpr char16_t kFirstKey[] = u"ButtonBar";

/// Where it is known to be done: the key is never taken away again, and each session that is loaded asks.
const VProfileStoreFactory* doneIn = nullptr;

bool HasKey(const char16_t* keyPath) {
    VProfileStore store(true);
    return store.GetRootKey()->KeyExists(keyPath);
}

void MoveButtonBars(const char16_t* source, const VStringArray& names) {
    VProfileStore store;
    VProfileKey from(store.GetRootKey(), source, 0);
    VProfileKey to(store.GetRootKey(), kButtonBarsKey, 0);
    for (const VUnicodeString& name : names) {
        const auto bar = VRef<ProfileUserButtonMap>::Adopt(new ProfileUserButtonMap);
        bar->LoadButtons(&from, name);
        const std::uint32_t code = from.GetImpl()->GetLastReport()->GetCode();
        const bool isDamaged = code != platform::kSuccess && code != platform::kFileNotFound;
        if (!isDamaged) bar->Save(to, true);  // an empty bar must not hide what can still be mended
    }
}
}  // namespace

void ForgetButtonBarUpgrade() {
    doneIn = nullptr;
}

void UpgradeButtonBars() {
    if (doneIn != nullptr && doneIn == GetProfileFactory()) return;
    if (HasKey(kButtonBarsKey)) {
        doneIn = GetProfileFactory();
        return;
    }
    const char16_t* const source = HasKey(kFormerKey) ? kFormerKey : kFirstKey;
    VStringArray names;
    if (!EnumerateButtonBars(source, names)) return;  // damaged: moved when it was mended, and not lost now
    AsOneUnit([&] {
        // Another process may have moved them meanwhile, and its user may have changed them.
        if (!HasKey(kButtonBarsKey)) MoveButtonBars(source, names);
        return true;
    });
}

bool EnumerateButtonBars(const char16_t* source, VStringArray& names) {
    VProfileStore store(true);
    VProfileKey key(store.GetRootKey(), source, 0);
    VProfileKeyIterator children(key, true);
    bool hasDefault = false;
    VUnicodeString name;
    std::uint32_t kind = 0;
    while (children.NextWithKind(name, kind)) {
        if (kind != static_cast<std::uint32_t>(ProfileKind::kListEntry)) continue;
        hasDefault = hasDefault || name == kDefaultButtonBar;
        names.Add(name);
    }
    if (!hasDefault) names.Add(VUnicodeString(kDefaultButtonBar));
    const std::uint32_t code = key.GetImpl()->GetLastReport()->GetCode();
    return code == platform::kSuccess || code == platform::kFileNotFound;
}

}  // namespace connectdialog
