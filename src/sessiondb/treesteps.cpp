#include "sessiondb/treesteps.h"

#include "config/sessionconfig.h"
#include "foundation/vreportmessageparams.h"
#include "platform/lasterror.h"
#include "sessiondb/sessionpaths.h"

namespace connectdialog {

bool CreateFolderKey(VProfileStore& store, const VUnicodeString& path) {
    VProfileKey key(store.GetRootKey(), BuildSessionKeyPath(path).GetData(), 1);
    return key.GetImpl()->GetLastReport()->GetCode() == 0;
}

bool HasSessionMark(VProfileKey& key) {
    std::uint32_t ignored = 0;
    return key.ReadDword(kIsSessionValue, ignored) ||
           key.GetImpl()->GetLastReport()->GetCode() == platform::kDatatypeMismatch;
}

VRef<ISessionConfig> LoadSessionFrom(VProfileKey& key, const VUnicodeString& path, const VUnicodeString& leaf) {
    auto config = VRef<ISessionConfig>::Adopt(CreateSessionConfig(leaf.GetData(), &key));
    config->SetPath(path);
    return config;
}

}  // namespace connectdialog
