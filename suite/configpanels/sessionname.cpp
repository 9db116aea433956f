#include "suite/configpanels/sessionname.h"

#include "foundation/casefold.h"
#include "foundation/textchecks.h"
#include "sessiondb/entryrefusals.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog {

namespace {

struct FaultText {
    SessionNameFault fault;
    /// The insert is the refused name; only those that show it safely have one.
    const char16_t* text;
};
constexpr FaultText kFaultTexts[] = {
    {SessionNameFault::kEmpty, u"The name is empty."},
    {SessionNameFault::kTooLong, u"The name is longer than 255 characters."},
    {SessionNameFault::kSeparator, u"The name \"%1\" holds \"\\\", which separates the names of a path."},
    {SessionNameFault::kColon, u"The name \"%1\" holds \":\", which separates the names of a list."},
    {SessionNameFault::kControl, u"The name holds a control character."},
    {SessionNameFault::kHalfCharacter, u"The name holds half a character."},
    {SessionNameFault::kBlankAtEdge, u"The name \"%1\" begins or ends with a blank."},
    {SessionNameFault::kDots, u"The name \"%1\" stands for a folder."},
    {SessionNameFault::kFolderData, u"The name \"%1\" is kept for the arrangement of a folder."},
    {SessionNameFault::kTemplate, u"\"%1\" is the session that new sessions are made from."},
    {SessionNameFault::kTooDeep, u"There is no room for \"%1\": the folders lie in each other too deep."},
    {SessionNameFault::kTaken, u"There is already an entry with the name \"%1\"."},
};

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
    if (parent.IsEmpty() && newName.EqualsNoCase(kDefaultSession)) return SessionNameFault::kTemplate;
    if (LiesTooDeep(JoinEntryPath(parent, newName))) return SessionNameFault::kTooDeep;
    return EntryExistsIn(parent, newName) ? SessionNameFault::kTaken : SessionNameFault::kNone;
}

VUnicodeString DescribeSessionNameFault(SessionNameFault fault, const VUnicodeString& name) {
    VUnicodeString text;
    for (const FaultText& row : kFaultTexts)
        if (row.fault == fault) text.Format(row.text, name);
    return text;
}

}  // namespace connectdialog
