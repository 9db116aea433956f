// What numbers of a session are when nobody set them, and where they must lie.
#pragma once

namespace connectdialog {

struct NumberRange {
    int usual;
    int least;
    int most;
};
inline constexpr NumberRange kIdleSeconds{300, 10, 9999999};
inline constexpr NumberRange kTransferBuffers{4, 1, 8};

}  // namespace connectdialog
