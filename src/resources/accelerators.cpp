#include "resources/accelerators.h"

namespace connectdialog {

namespace {

constexpr Accelerator kConnectAccelerators[] = {
    {Accelerator::kAlt, u'C', 2000},        // connect
    {Accelerator::kControl, u'C', 2104},    // copy
    {Accelerator::kControl, u'F', 2014},    // find
    {Accelerator::kControl, u'X', 2103},    // cut
    {Accelerator::kNone, kKeyF3, 32778},    // find next
    {Accelerator::kAlt, u'D', 2106},        // delete
    {Accelerator::kAlt, kKeyReturn, 2002},  // properties
    {Accelerator::kAlt, u'R', 2102},        // properties
    {Accelerator::kAlt, u'F', 2107},        // new folder
    {Accelerator::kControl, u'V', 2105},    // paste
    {Accelerator::kAlt, u'N', 2101},        // new session
    {Accelerator::kAlt, u'Q', 32924},       // quick connect
    {Accelerator::kAlt, u'T', 32772},       // connect in terminal
    {Accelerator::kAlt, u'M', 32922},       // rename
    {Accelerator::kAlt, u'B', 32777},       // open in a tab
    {Accelerator::kNone, kKeyF2, 32922},    // rename
    {Accelerator::kAlt, u'X', 32773},       // connect in file transfer
    {Accelerator::kAlt, u'E', 2109},        // desktop shortcut
    {Accelerator::kAlt, u'A', 32791},       // rotate the arrangement
};

}  // namespace

AcceleratorTable LoadAcceleratorTable(int resourceId) {
    if (resourceId == kConnectAcceleratorsId) return kConnectAccelerators;
    return {};
}

}  // namespace connectdialog
