// Settings that are records, field by field.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace connectdialog {
class VProfileData;
}

namespace connectdialog::connectctl {

/// A font, a window's place or page margins as an object; points are [x, y], rectangles [left, top, right, bottom].
/// Null for any other setting.
nlohmann::json GetRecordJson(const VProfileData& setting);

}  // namespace connectdialog::connectctl
