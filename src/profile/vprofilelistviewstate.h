// How a list view shows its columns and in which order its rows stand.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/varray.h"
#include "profile/vprofilestatetext.h"

namespace connectdialog {

/// Kept as "ascending,sort column,view mode,reserved,column count", followed by three numbers a column: width, visible,
/// position. Older versions wrote the width alone. Any other count of numbers gives the defaults and no columns.
class VProfileListViewState : public VProfileStateText {
  public:
    struct ColumnInfo {
        std::int32_t width = -1;  ///< -1: unknown
        bool visible = true;
        std::int32_t position = 0;  ///< its index at first

        friend bool operator==(const ColumnInfo&, const ColumnInfo&) = default;
    };
    struct Fields {
        bool ascending = true;
        std::int32_t sortColumn = 1;
        std::uint32_t viewMode = 1;
        std::int32_t reservedState = 0;  ///< carried for the window that knows it
        VArray<ColumnInfo> columns;
    };

    VProfileListViewState() = default;

    /// `Remote ListView State` is the name unless another is set.
    bool Load(VProfileKey* key, const VUnicodeString& defaultText);
    using VProfileStateText::Load;

    const Fields& GetFields() const { return fields; }
    Fields& EditFields() { return fields; }

    std::u16string FormatFields() const override;

  protected:
    void ParseFields(std::u16string_view text) override;

  private:
    static bool Parse(std::u16string_view text, Fields& fields);
    static bool ParseColumns(std::u16string_view text, std::int32_t count, VArray<ColumnInfo>& columns);

    Fields fields;
};

/// The text of a list that nobody arranged.
inline VUnicodeString PlainListText() {
    return u"1,1,1,0,0"_v;
}

}  // namespace connectdialog
