#include "suite/configpanels/sessionname.h"

#include "foundation/casefold.h"
#include "foundation/textchecks.h"
#include "sessiondb/entryrefusals.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog {

namespace {

struct FaultText {
    SessionNameFault fault;
    /// The inserts are the refused name; only faults that show it safely have one.
    const char16_t* text;
    const char16_t* inDialogs;
};
constexpr FaultText kFaultTexts[] = {
    {SessionNameFault::kEmpty, u"The name is empty.", u"名称不能为空。"},
    {SessionNameFault::kTooLong, u"The name is longer than 255 characters.", u"名称不能超过 255 个字符。"},
    {SessionNameFault::kSeparator, u"The name \"%1\" holds \"\\\", which separates the names of a path.",
     u"名称“%1”不能含有“\\”，它用来分隔路径中的名称。"},
    {SessionNameFault::kColon, u"The name \"%1\" holds \":\", which separates the names of a list.",
     u"名称“%1”不能含有“:”，它用来分隔列表中的名称。"},
    {SessionNameFault::kControl, u"The name holds a control character.", u"名称不能含有控制字符。"},
    {SessionNameFault::kHalfCharacter, u"The name holds half a character.", u"名称含有不完整的字符。"},
    {SessionNameFault::kBlankAtEdge, u"The name \"%1\" begins or ends with a blank.",
     u"名称“%1”不能以空格开头或结尾。"},
    {SessionNameFault::kDots, u"The name \"%1\" stands for a folder.", u"名称“%1”代表文件夹，不能使用。"},
    {SessionNameFault::kFolderData, u"The name \"%1\" is kept for the arrangement of a folder.",
     u"名称“%1”保留给文件夹的排列使用。"},
    {SessionNameFault::kTemplate, u"\"%1\" is the session that new sessions are made from.", u"“%1”是新会话的模板。"},
    {SessionNameFault::kTooDeep, u"There is no room for \"%1\": the folders lie in each other too deep.",
     u"“%1”处的文件夹层数太多。"},
    {SessionNameFault::kTaken, u"There is already an entry with the name \"%1\".", u"名称“%1”已经存在。"},
};

VUnicodeString Word(const char16_t* FaultText::*words, SessionNameFault fault, const VUnicodeString& name) {
    VUnicodeString text;
    for (const FaultText& row : kFaultTexts)
        if (row.fault == fault) text.Format(row.*words, name);
    return text;
}

}  // namespace

SessionNameFault CheckSessionNameText(const VUnicodeString& name) {
    const std::u16string_view text = name;
    if (text.empty()) return SessionNameFault::kEmpty;
    if (text.size() > kMaxSessionNameLength) return SessionNameFault::kTooLong;
    if (HasControl(text)) return SessionNameFault::kControl;
    if (HasHalfCharacter(text)) return SessionNameFault::kHalfCharacter;
    if (text.find(u'\\') != text.npos) return SessionNameFault::kSeparator;
    if (text.find(u':') != text.npos) return SessionNameFault::kColon;
    if (IsSpace(text.front()) || IsSpace(text.back())) return SessionNameFault::kBlankAtEdge;
    if (text == u"." || text == u"..") return SessionNameFault::kDots;
    return EqualsNoCase(text, kFolderDataKey) ? SessionNameFault::kFolderData : SessionNameFault::kNone;
}

SessionNameFault CheckSessionName(const VUnicodeString& parent, const VUnicodeString& oldName,
                                  const VUnicodeString& newName) {
    const SessionNameFault fault = CheckSessionNameText(newName);
    if (fault != SessionNameFault::kNone) return fault;
    if (newName.EqualsNoCase(oldName)) return SessionNameFault::kNone;
    if (IsTemplateEntry(parent, newName)) return SessionNameFault::kTemplate;
    if (LiesTooDeep(JoinEntryPath(parent, newName))) return SessionNameFault::kTooDeep;
    return EntryExistsIn(parent, newName) ? SessionNameFault::kTaken : SessionNameFault::kNone;
}

VUnicodeString DescribeSessionNameFault(SessionNameFault fault, const VUnicodeString& name) {
    return Word(&FaultText::text, fault, name);
}
VUnicodeString TranslateSessionNameFault(SessionNameFault fault, const VUnicodeString& name) {
    return Word(&FaultText::inDialogs, fault, name);
}

}  // namespace connectdialog
