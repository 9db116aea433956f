#include "foundation/vfiletemplate.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "foundation/venvironment.h"
#include "foundation/vfiletime.h"
#include "platform/clock.h"

namespace connectdialog {

namespace {

struct TimeToken {
    char16_t letter;
    int VSystemTime::*value;
    const char16_t* form;
};
constexpr TimeToken kTimeTokens[] = {
    {u'Y', &VSystemTime::year, u"%1!04d!"},         {u'M', &VSystemTime::month, u"%1!02d!"},
    {u'D', &VSystemTime::day, u"%1!02d!"},          {u'h', &VSystemTime::hour, u"%1!02d!"},
    {u'm', &VSystemTime::minute, u"%1!02d!"},       {u's', &VSystemTime::second, u"%1!02d!"},
    {u't', &VSystemTime::milliseconds, u"%1!03d!"},
};

/// What the token of this letter stands for; empty for a letter that is none.
VUnicodeString TokenText(char16_t letter, const VSystemTime& time) {
    if (letter == u'%') return u"%";
    VUnicodeString text;
    const auto* token = std::find_if(std::begin(kTimeTokens), std::end(kTimeTokens),
                                     [letter](const TimeToken& row) { return row.letter == letter; });
    if (token != std::end(kTimeTokens)) text.Format(token->form, time.*(token->value));
    return text;
}

/// `rest` begins with the letter that is no token: up to the next percent sign it is most likely a variable's name.
VUnicodeString Offender(std::u16string_view rest) {
    const std::size_t next = rest.find(u'%');
    return u"%" + VUnicodeString(rest.substr(0, next == rest.npos ? 1 : next + 1));
}

VUnicodeString PutTimeIn(std::u16string_view text, const VSystemTime& time, IReportMessageParams& report) {
    VUnicodeString name;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t percent = std::min(text.find(u'%', at), text.size());
        name += text.substr(at, percent - at);
        if (percent == text.size()) break;
        if (percent + 1 == text.size()) {
            report.SetMessage(kReportTemplateEndsInToken);
            return {};
        }
        const VUnicodeString value = TokenText(text[percent + 1], time);
        if (value.IsEmpty()) {
            report.SetMessage(kReportUnknownTemplateToken);
            report.AddInsert(Offender(text.substr(percent + 1)).GetData());
            return {};
        }
        name += value;
        at = percent + 2;
    }
    return name;
}

}  // namespace

VUnicodeString VExpandFileTemplate(const VUnicodeString& fileTemplate, IReportMessageParams& report) {
    report.SetMessage(0);
    VSystemTime now;
    VFileTimeToUtc(platform::GetFileTimeNow(), now);
    VUnicodeString text = VExpandEnvironment(fileTemplate);
    if (VIsPortableInstall()) text = VExpandPortableTokens(text);
    return PutTimeIn(text, now, report);
}

}  // namespace connectdialog
