#include "profile/vprofilelistviewstate.h"

#include "foundation/casefold.h"
#include "foundation/texttools.h"

namespace connectdialog {

namespace {

constexpr std::uint64_t kNumbersPerColumn = 3;

/// The number that a text begins with; 0 when it begins with none.
std::int32_t LeadingNumber(std::u16string_view text) {
    std::int32_t number = 0;
    TakeNumber(text, number);
    return number;
}

/// The first word of a text.
std::u16string_view FirstWord(std::u16string_view text) {
    while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
    std::size_t length = 0;
    while (length < text.size() && !IsSpace(text[length])) ++length;
    return text.substr(0, length);
}

}  // namespace

bool VProfileListViewState::Load(VProfileKey* key, const VUnicodeString& defaultText) {
    if (GetName().IsEmpty()) SetName(u"Remote ListView State"_v);
    return VProfileStateText::Load(key, defaultText);
}

std::u16string VProfileListViewState::FormatFields() const {
    std::u16string text;
    for (const std::int64_t number :
         {std::int64_t{fields.ascending}, std::int64_t{fields.sortColumn}, std::int64_t{fields.viewMode},
          std::int64_t{fields.reservedState}, static_cast<std::int64_t>(fields.columns.GetCount())})
        AppendNumber(text, number);
    for (const ColumnInfo& column : fields.columns) {
        AppendNumber(text, column.width);
        AppendNumber(text, column.visible ? 1 : 0);
        AppendNumber(text, column.position);
    }
    return text;
}

void VProfileListViewState::ParseFields(std::u16string_view text) {
    Fields parsed;
    fields = Parse(text, parsed) ? parsed : Fields();
}

bool VProfileListViewState::Parse(std::u16string_view text, Fields& fields) {
    std::int32_t ascending = 0;
    std::int32_t count = 0;
    const bool isRead = TakeNumber(text, ascending) && TakeComma(text) && TakeNumber(text, fields.sortColumn) &&
                        TakeComma(text) && TakeNumber(text, fields.viewMode) && TakeComma(text) &&
                        TakeNumber(text, fields.reservedState) && TakeComma(text) && TakeNumber(text, count);
    if (!isRead) return false;
    fields.ascending = ascending != 0;
    return ParseColumns(TakeComma(text) ? FirstWord(text) : std::u16string_view(), count, fields.columns);
}

bool VProfileListViewState::ParseColumns(std::u16string_view text, std::int32_t count, VArray<ColumnInfo>& columns) {
    VStringArray tokens;
    VTokenize(text, tokens, {u","}, {u"\"\""}, true, true);
    const std::uint64_t numbers = tokens.GetCount();
    const bool hasOnlyWidths = count >= 0 && numbers == static_cast<std::uint64_t>(count);
    const std::uint64_t step = hasOnlyWidths ? 1 : kNumbersPerColumn;
    if (count < 0 || numbers != step * static_cast<std::uint64_t>(count)) return false;
    for (std::uint64_t i = 0; i < numbers; i += step) {
        ColumnInfo column;
        column.width = LeadingNumber(tokens[i]);
        column.visible = hasOnlyWidths || LeadingNumber(tokens[i + 1]) != 0;
        column.position = hasOnlyWidths ? static_cast<std::int32_t>(i) : LeadingNumber(tokens[i + 2]);
        columns.Add(column);
    }
    return true;
}

}  // namespace connectdialog
