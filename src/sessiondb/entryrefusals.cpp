#include "sessiondb/entryrefusals.h"

#include "foundation/vreportmessageparams.h"
#include "foundation/vstringarray.h"
#include "platform/lasterror.h"
#include "profile/vprofilekey.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog {

namespace {

constexpr std::uint32_t kInUseMessage = 0xE1090003;

struct RefusalText {
    EntryRefusal refusal;
    const char16_t* text;
};
constexpr RefusalText kRefusalTexts[] = {
    {EntryRefusal::kIntoItself, u"Cannot copy a folder into itself"},
    {EntryRefusal::kIntoChild, u"Cannot copy or move a parent folder into a child"},
    {EntryRefusal::kTaken, u"%1 already exists in the target folder"},
    {EntryRefusal::kTooDeep, u"There is no room for %1: the folders lie in each other too deep"},
    {EntryRefusal::kTemplate, u"ERROR: Could not add a new session to the tree."},
};

}  // namespace

bool LiesTooDeep(const VUnicodeString& path) {
    VProfileStore store(true);
    const VUnicodeString key = BuildSessionKeyPath(path);
    return !store.GetRootKey()->KeyExists(key.GetData()) &&
           store.GetRootKey()->GetImpl()->GetLastReport()->GetCode() == platform::kInvalidParameter;
}

EntryRefusal CheckCopy(const VUnicodeString& source, const VUnicodeString& targetFolder) {
    const bool isFolder = IsFolderPath(source);
    if (isFolder && source.EqualsNoCase(targetFolder)) return EntryRefusal::kIntoItself;
    if (IsSameOrInside(targetFolder, source)) return EntryRefusal::kIntoChild;
    const bool isElsewhere = !GetEntryParent(source).EqualsNoCase(targetFolder);
    if (isFolder && isElsewhere && EntryExistsIn(targetFolder, GetEntryLeaf(source))) return EntryRefusal::kTaken;
    if (LiesTooDeep(JoinEntryPath(targetFolder, GetEntryLeaf(source)))) return EntryRefusal::kTooDeep;
    const bool isTemplate = IsTemplateEntry(targetFolder, GetEntryLeaf(source));
    return isElsewhere && isTemplate ? EntryRefusal::kTemplate : EntryRefusal::kNone;
}

VUnicodeString DescribeEntryRefusal(EntryRefusal refusal, const VUnicodeString& source) {
    VUnicodeString text;
    for (const RefusalText& row : kRefusalTexts)
        if (row.refusal == refusal) text.Format(row.text, GetEntryLeaf(source));
    return text;
}

VUnicodeString ListEntriesInUse(std::span<const VUnicodeString> paths, const VStringArray& running) {
    VUnicodeString entries;
    for (const VUnicodeString& path : paths) {
        for (const VUnicodeString& open : running) {
            if (path.IsEmpty() || !path.EqualsNoCase(open)) continue;
            if (!entries.IsEmpty()) entries += u"\n";
            entries += open;
        }
    }
    return entries;
}

VUnicodeString DescribeEntriesInUse(const VUnicodeString& entries) {
    VReportMessageParams report(kInUseMessage);
    report.AddInsert(entries.GetData());
    return VUnicodeString(report.GetText());
}

}  // namespace connectdialog
