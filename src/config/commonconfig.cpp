#include "config/commonconfig.h"

#include "config/remotehostconfig.h"

namespace connectdialog {

CommonConfig::CommonConfig(const CommonConfig& other) {
    if (other.remoteHost) remoteHost = VRef<IRemoteHostConfig>::Adopt(other.remoteHost->Clone());
    for (std::size_t i = 0; i < shared.size(); ++i)
        if (other.shared[i]) shared[i] = VRef<ISharedConfig>::Adopt(other.shared[i]->Clone());
}

IRemoteHostConfig* CommonConfig::GetRemoteHostConfig(VProfileKey* key) {
    if (!remoteHost) remoteHost = VRef<IRemoteHostConfig>::Adopt(new RemoteHostConfig(key));
    return VRef(remoteHost).Detach();
}

ISharedConfig* CommonConfig::GetSharedConfig(void* context, bool which, SharedConfigCreator create) {
    VRef<ISharedConfig>& object = shared[which ? 1 : 0];
    if (!object) object = VRef<ISharedConfig>::Adopt(create(context));
    return VRef(object).Detach();
}

}  // namespace connectdialog
