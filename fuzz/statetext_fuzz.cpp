// Any text as the state of a list view or a frame: what was read is written so that it reads the same again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "profile/vprofileexplorerframestate.h"
#include "profile/vprofilelistviewstate.h"

using namespace connectdialog;

namespace {

template <class State>
void Check(const VUnicodeString& text) {
    State state;
    state.Load(nullptr, u"V"_v, text);
    const VUnicodeString written(state.FormatFields());
    State again;
    again.Load(nullptr, u"V"_v, written);
    if (written != again.FormatFields()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const VUnicodeString text(reinterpret_cast<const char*>(data), size);
    Check<VProfileListViewState>(text);
    Check<VProfileExplorerFrameState>(text);
    Check<VProfileFiveNumberState>(text);
    return 0;
}
