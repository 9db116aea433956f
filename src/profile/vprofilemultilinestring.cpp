#include "profile/vprofilemultilinestring.h"

#include <string_view>
#include <vector>

#include "foundation/texttools.h"

namespace connectdialog {

void VProfileMultiLineString::SetText(const VUnicodeString& text) {
    VStringArray lines;
    VSplitOnChar(text, lines, u'\n');
    for (std::uint64_t i = 0; i < lines.GetCount(); ++i) {
        VUnicodeString& line = lines[i];
        if (!line.IsEmpty() && line[line.GetLength() - 1] == u'\r') line = line.Left(line.GetLength() - 1);
    }
    Set(lines);
}

void VProfileMultiLineString::GetText(VUnicodeString& text, bool carriageReturns) const {
    std::vector<std::u16string_view> pieces;
    for (const VUnicodeString& line : Get()) {
        if (!pieces.empty()) pieces.push_back(carriageReturns ? u"\r\n" : u"\n");
        pieces.push_back(line);
    }
    text = VConcatenate(pieces, text.GetState());
}

bool VProfileMultiLineString::LoadNamed(VProfileKey* key, const VUnicodeString& name) {
    Edit().Clear();
    SetName(name);
    return Load(key, VStringArray());
}

}  // namespace connectdialog
