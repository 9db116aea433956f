#include "profile/vprofileexplorerframestate.h"

namespace connectdialog {

template <std::size_t kFlags>
std::u16string VProfileFrameState<kFlags>::FormatFields() const {
    std::u16string text;
    for (const bool flag : fields.flags) AppendNumber(text, flag ? 1 : 0);
    AppendNumber(text, fields.firstSize);
    AppendNumber(text, fields.secondSize);
    return text;
}

template <std::size_t kFlags>
void VProfileFrameState<kFlags>::ParseFields(std::u16string_view text) {
    Fields parsed;
    fields = Fields();
    for (bool& flag : parsed.flags) {
        std::int32_t number = 0;
        if (!TakeNumber(text, number) || !TakeComma(text)) return;
        flag = number != 0;
    }
    if (TakeNumber(text, parsed.firstSize) && TakeComma(text) && TakeNumber(text, parsed.secondSize)) fields = parsed;
}

template class VProfileFrameState<1>;
template class VProfileFrameState<3>;

}  // namespace connectdialog
