#include "frame/modulestate.h"

#include "platform/registeredmessage.h"

namespace connectdialog {

ModuleState::ModuleState()
    : moduleInstance(platform::GetLibraryModule()),
      connectAccelerators(LoadAcceleratorTable(kConnectAcceleratorsId)),
      globalConfigChangeMessage(platform::GetRegisteredMessage(u"Brennmark_Software_Global_Config_Change")),
      createNewTabMessage(platform::GetRegisteredMessage(u"Brennmark_Software_Create_New_Tab")),
      wakestoneShowSelectionMessage(platform::GetRegisteredMessage(u"Brennmark_Software_Wakestone_Show_Selection")),
      wakestoneCanExitApplicationMessage(platform::GetRegisteredMessage(u"Brennmark_Software_Can_Exit_Application")) {}

ModuleState& GetModuleState() {
    static ModuleState state;
    return state;
}

}  // namespace connectdialog
