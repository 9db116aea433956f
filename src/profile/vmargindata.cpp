#include "profile/vmargindata.h"

#include <limits>

#include "profile/packedrecord.h"

namespace connectdialog {

static_assert(VMarginData::kStoredSize == 4 * sizeof(double) && std::numeric_limits<double>::is_iec559);

void VMarginData::Pack(std::span<std::byte, kStoredSize> record) const {
    RecordWriter writer(record);
    for (const double margin : {left, top, right, bottom}) writer.Put(margin);
}

VMarginData VMarginData::Unpack(std::span<const std::byte, kStoredSize> record) {
    VMarginData margins;
    RecordReader reader(record);
    for (double* margin : {&margins.left, &margins.top, &margins.right, &margins.bottom}) reader.Get(*margin);
    return margins;
}

}  // namespace connectdialog
