#include "hosts/probe/makestore.h"

#include "config/sessionconfig.h"
#include "imports/connectconfig.h"
#include "profile/iprofilestore.h"
#include "profile/vprofilekey.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "suite/hostsetup/hostsetup.h"

namespace connectdialog::hosts {

namespace {

bool FillFolder(const VUnicodeString& folder, std::size_t count) {
    const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"", nullptr));
    return AddFolderEntry(u"", folder, u"", true) && StoreSessionEntries(folder, *session, count, [&](std::size_t i) {
               VUnicodeString name;
               name.Format(u"session %1!06d!", static_cast<int>(i));
               session->SetPath(JoinEntryPath(folder, name));
               session->GetConnectConfig()->SetHostName(u"host.example.net");
               return true;
           });
}

}  // namespace

bool MakeStore(const char* url, std::size_t folders, std::size_t sessions, std::size_t wide) {
    VUnicodeString notice;
    const auto store = OpenReferenceStore(u"NorHalden"_v, VUnicodeString(url), notice);
    if (!store) return false;
    VProfileStore unit(nullptr);
    bool isWhole = unit.JoinUnitOfWork() && FillFolder(u"wide"_v, wide);
    for (std::size_t i = 0; isWhole && i < folders; ++i) {
        VUnicodeString name;
        name.Format(u"f%1!04d!", static_cast<int>(i));
        isWhole = FillFolder(name, sessions);
    }
    isWhole = isWhole && WriteIsExpanded(u""_v, true);
    return unit.Close() && isWhole;
}

}  // namespace connectdialog::hosts
