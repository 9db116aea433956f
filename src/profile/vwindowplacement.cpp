#include "profile/vwindowplacement.h"

#include "foundation/vreportmessageparams.h"
#include "profile/packedrecord.h"

namespace connectdialog {

namespace {

constexpr VPoint kNowhere = {-4, -4};

/// Calls `visit` with each field in the order of the record.
template <class Placement>
void VisitFields(Placement& placement, auto visit) {
    visit(placement.length);
    visit(placement.flags);
    visit(placement.showState);
    for (auto* point : {&placement.minimized, &placement.maximized}) {
        visit(point->x);
        visit(point->y);
    }
    visit(placement.normal.left);
    visit(placement.normal.top);
    visit(placement.normal.right);
    visit(placement.normal.bottom);
}

static_assert(VWindowPlacement::kStoredSize == 3 * sizeof(std::uint32_t) + 2 * sizeof(VPoint) + sizeof(VRectangle));

}  // namespace

VWindowPlacement VWindowPlacement::Unplaced() {
    VWindowPlacement placement;
    placement.length = kStoredSize;
    placement.showState = kShowNormal;
    placement.minimized = kNowhere;
    placement.maximized = kNowhere;
    return placement;
}

void VWindowPlacement::Pack(std::span<std::byte, kStoredSize> record) const {
    RecordWriter writer(record);
    VisitFields(*this, [&](auto field) { writer.Put(field); });
}

VWindowPlacement VWindowPlacement::Unpack(std::span<const std::byte, kStoredSize> record) {
    VWindowPlacement placement;
    RecordReader reader(record);
    VisitFields(placement, [&](auto& field) { reader.Get(field); });
    return placement;
}

}  // namespace connectdialog
