#include "menutoolbar/vcustomtoolbarbase.h"

#include "resources/accelerators.h"

namespace connectdialog {

namespace {

constexpr std::uint32_t kGrey = 0x808080;
constexpr int kSystemWindowColour = 5;

bool IsEditKey(const ToolbarKeyMessage& message) {
    switch (message.key) {
        case kKeyBack:
        case kKeyDelete:
        case kKeyReturn:
            return true;
        case u'C':
        case u'V':
            return message.isControlDown;
        default:
            return false;
    }
}

}  // namespace

bool VCustomToolbarBase::PreTranslateMessage(const ToolbarKeyMessage& message) {
    const bool isOfKeyboard =
        message.message >= ToolbarKeyMessage::kFirst && message.message <= ToolbarKeyMessage::kLast;
    if (sink == nullptr || !isOfKeyboard || !IsEditKey(message)) return false;
    if (message.key == kKeyReturn && message.message == ToolbarKeyMessage::kKeyDown)
        sink->OnEnterKey(message.isControlDown, message);
    else
        DispatchToEdit(message);
    return true;
}

ToolbarEditColours VCustomToolbarBase::GetEditColours() const {
    ToolbarEditColours colours;
    if (isHintShown) colours.text = kGrey;
    colours.systemBackground = kSystemWindowColour;
    return colours;
}

}  // namespace connectdialog
