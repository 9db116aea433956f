#include "suite/protocols/fieldfaults.h"

namespace connectdialog {

namespace {

struct FaultText {
    LaunchFault fault;
    const char16_t* text;
};
constexpr FaultText kFaultTexts[] = {
    {kLaunchLeadingDash, u"“%1”不能以“-”开头：程序会把它当作选项。"},
    {kLaunchControl, u"“%1”含有控制字符。"},
    {kLaunchNoHostName, u"“%1”含有主机名和地址中不能有的字符。"},
    {kLaunchNoUserName, u"“%1”含有用户名中不能有的字符。"},
    {kLaunchNoJumpHost, u"“%1”必须是 user@host:port 形式的主机，以逗号分隔。"},
    {kLaunchTooLong, u"“%1”太长。"},
    {kLaunchOpenQuote, u"“%1”缺少右引号。"},
};
constexpr char16_t kNotTaken[] = u"“%1”不接受这个值。";

}  // namespace

VUnicodeString DescribeFieldFault(LaunchFault fault, const VUnicodeString& label) {
    const char16_t* words = kNotTaken;
    for (const FaultText& row : kFaultTexts)
        if (row.fault == fault) words = row.text;
    VUnicodeString text;
    text.Format(words, label);
    return text;
}

}  // namespace connectdialog
