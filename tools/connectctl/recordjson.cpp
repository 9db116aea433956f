#include "tools/connectctl/recordjson.h"

#include <nlohmann/json.hpp>

#include "foundation/vreportmessageparams.h"
#include "profile/vlogfont.h"
#include "profile/vmargindata.h"
#include "profile/vwindowplacement.h"
#include "tools/connectctl/output.h"

namespace connectdialog::connectctl {

namespace {

nlohmann::json ToJson(const VLogFont& font) {
    return {{"face", JsonText(font.GetFace())},
            {"size", font.size},
            {"height", font.height},
            {"width", font.width},
            {"escapement", font.escapement},
            {"orientation", font.orientation},
            {"weight", font.weight},
            {"italic", font.italic},
            {"underline", font.underline},
            {"strikeOut", font.strikeOut},
            {"characterSet", font.characterSet},
            {"outPrecision", font.outPrecision},
            {"clipPrecision", font.clipPrecision},
            {"quality", font.quality},
            {"pitchAndFamily", font.pitchAndFamily}};
}

nlohmann::json ToJson(const VWindowPlacement& placement) {
    const VRectangle& normal = placement.normal;
    return {{"length", placement.length},
            {"flags", placement.flags},
            {"showState", placement.showState},
            {"minimized", {placement.minimized.x, placement.minimized.y}},
            {"maximized", {placement.maximized.x, placement.maximized.y}},
            {"normal", {normal.left, normal.top, normal.right, normal.bottom}}};
}

nlohmann::json ToJson(const VMarginData& margins) {
    return {{"left", margins.left}, {"top", margins.top}, {"right", margins.right}, {"bottom", margins.bottom}};
}

template <class Record>
bool TryRecord(const VProfileData& setting, nlohmann::json& value) {
    const auto* record = dynamic_cast<const VProfile2<Record, VProfileBinary>*>(&setting);
    if (record != nullptr) value = ToJson(record->Get());
    return record != nullptr;
}

}  // namespace

nlohmann::json GetRecordJson(const VProfileData& setting) {
    nlohmann::json value;
    if (TryRecord<VLogFont>(setting, value) || TryRecord<VWindowPlacement>(setting, value)) return value;
    TryRecord<VMarginData>(setting, value);
    return value;
}

}  // namespace connectdialog::connectctl
