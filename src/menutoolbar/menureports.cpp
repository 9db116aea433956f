#include "menutoolbar/menureports.h"

#include "foundation/vunicodestring.h"

namespace connectdialog {

namespace {
/// Characters; as long as the name of a file may become.
constexpr std::size_t kLongestInsert = 4096;
}  // namespace

void FillMenuReport(VReportMessageParams& report, std::uint32_t code, std::uint32_t line,
                    std::initializer_list<std::u16string_view> inserts) {
    report.SetMessage(code);
    report.SetUserData(line);
    const FormatArgument number(line);
    report.AddInsertFormatted(u"%1!d!", &number, 1);
    for (const std::u16string_view insert : inserts)
        report.AddInsert(VUnicodeString(insert.substr(0, kLongestInsert)).GetData());
}

}  // namespace connectdialog
