#include "resources/accelerators.h"

#include "resources/connectcommands.h"

namespace connectdialog {

namespace {

using namespace ConnectCommands;

constexpr Accelerator kConnectAccelerators[] = {
    {Accelerator::kAlt, u'C', kConnect},
    {Accelerator::kControl, u'C', kCopy},
    {Accelerator::kControl, u'F', kFind},
    {Accelerator::kControl, u'X', kCut},
    {Accelerator::kNone, kKeyF3, kFindNext},
    {Accelerator::kAlt, u'D', kDelete},
    {Accelerator::kAlt, kKeyReturn, kBarProperties},
    {Accelerator::kAlt, u'R', kProperties},
    {Accelerator::kAlt, u'F', kNewFolder},
    {Accelerator::kControl, u'V', kPaste},
    {Accelerator::kAlt, u'N', kNewSession},
    {Accelerator::kAlt, u'Q', kMenuQuickConnect},
    {Accelerator::kAlt, u'T', kConnectInTerminal},
    {Accelerator::kAlt, u'M', kRename},
    {Accelerator::kAlt, u'B', kOpenInTab},
    {Accelerator::kNone, kKeyF2, kRename},
    {Accelerator::kAlt, u'X', kConnectInTransfer},
    {Accelerator::kAlt, u'E', kShortcut},
    {Accelerator::kAlt, u'A', kRotateArrangement},
};

}  // namespace

AcceleratorTable LoadAcceleratorTable(int resourceId) {
    if (resourceId == kConnectAcceleratorsId) return kConnectAccelerators;
    return {};
}

}  // namespace connectdialog
