// How a frame divides its room: flags and sizes on one line.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "profile/vprofilestatetext.h"

namespace connectdialog {

/// `kFlags` flags, written as 1 or 0, and two signed sizes behind them, with commas between. Fewer numbers give the
/// defaults.
template <std::size_t kFlags>
class VProfileFrameState : public VProfileStateText {
  public:
    struct Fields {
        Fields() { flags.fill(true); }
        std::array<bool, kFlags> flags;
        std::int32_t firstSize = -1;  ///< -1: the frame's own choice
        std::int32_t secondSize = -1;

        friend bool operator==(const Fields&, const Fields&) = default;
    };

    const Fields& GetFields() const { return fields; }
    Fields& EditFields() { return fields; }

    std::u16string FormatFields() const override;

  protected:
    void ParseFields(std::u16string_view text) override;

  private:
    Fields fields;
};

extern template class VProfileFrameState<1>;
extern template class VProfileFrameState<3>;

/// An explorer frame: one flag and the sizes of its two panes; what they mean lies with the frame.
using VProfileExplorerFrameState = VProfileFrameState<1>;
/// The text of one that was never placed.
inline VUnicodeString UnplacedFrameText() {
    return u"1,-1,-1"_v;
}

/// The state of five numbers among the global settings.
using VProfileFiveNumberState = VProfileFrameState<3>;

}  // namespace connectdialog
