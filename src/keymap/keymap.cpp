#include "keymap/keymap.h"

#include <algorithm>
#include <string>
#include <utility>

#include "foundation/textencoding.h"
#include "foundation/vpath.h"
#include "foundation/vreportmessageparams.h"
#include "foundation/vtextfile.h"
#include "keymap/builtinkeymap.h"
#include "keymap/keymapreader.h"
#include "keymap/keymapwriter.h"
#include "platform/files.h"
#include "platform/lasterror.h"
#include "platform/userfiles.h"

namespace connectdialog {

namespace {

bool OpenExisting(VTextFile& file, const VUnicodeString& name) {
    file.SetShareMode(platform::kShareRead);
    return file.Open(name, platform::kGenericRead, platform::kOpenExisting);
}

bool LeavesFolder(std::u16string_view name) {
    std::u16string path(name);
    std::ranges::replace(path, u'/', u'\\');
    return (u'\\' + path + u'\\').find(u"\\..\\") != path.npos;
}

/// This empties a file that stands there, so a name from outside must not lead to another folder.
bool OpenInKeymapsFolder(VTextFile& file, const VUnicodeString& name) {
    if (LeavesFolder(name)) return false;
    const VUnicodeString folder = VGetConfigurationPath(u"keymaps");
    if (folder.IsEmpty() || !platform::CreateUserFolder(folder)) return false;
    file.SetEncoding(TextEncoding::kUnknown);
    return file.Open(VJoinPath(folder.GetData(), name.GetData()), platform::kGenericRead | platform::kGenericWrite,
                     platform::kCreateAlways);
}

void Report(VReportMessageParams& report, std::uint32_t code, const VUnicodeString& name, std::u16string_view detail) {
    report.SetMessage(code);
    report.AddInsert(name.GetData());
    report.AddInsert(VUnicodeString(detail).GetData());
}

/// Fails with what was found in the file and with the system's text of `cause`.
bool FailToRead(VReportMessageParams& report, const VUnicodeString& name, std::uint32_t cause,
                std::u16string errors = {}) {
    if (!errors.empty()) errors += u'\n';
    errors += VReportMessageParams(cause).GetText();
    Report(report, kReportBadKeymap, name, errors);
    return false;
}

}  // namespace

Keymap::Keymap(const Keymap& other) : IKeymap(other) {
    for (const auto& [key, entry, next] : other.entries) entries[key] = entry;
}

Keymap& Keymap::operator=(const Keymap& other) {
    if (&other == this) return *this;
    defaults.reset();
    hasComments = false;
    entries.RemoveAll();
    for (const auto& [key, entry, next] : other.entries) entries[key] = entry;
    return *this;
}

Keymap::~Keymap() = default;

std::uint32_t Keymap::GetKeyFunction(std::uint32_t key) const {
    if (const KeyMapEntry* entry = entries.Find(key)) return entry->function;
    return defaults ? defaults->GetKeyFunction(key) : kKeyFunctionNone;
}

VUnicodeString Keymap::GetKeyString(std::uint32_t key) const {
    if (const KeyMapEntry* entry = entries.Find(key)) return entry->string;
    return defaults ? defaults->GetKeyString(key) : VUnicodeString();
}

void Keymap::SetKeyFunction(std::uint32_t key, std::uint32_t number) {
    if (number == kKeyFunctionNone)
        entries.Remove(key);
    else
        entries[key].function = number;
}

void Keymap::SetKeyString(std::uint32_t key, const VUnicodeString& text) {
    if (KeyMapEntry* entry = entries.Find(key)) entry->string = text;
}

void Keymap::SetKeyArguments(std::uint32_t key, const VUnicodeString& text) {
    if (KeyMapEntry* entry = entries.Find(key)) entry->arguments = text;
}

bool Keymap::Load(const VUnicodeString& fileName, VReportMessageParams& report) {
    report.Clear();
    VTextFile file;
    if (!OpenExisting(file, fileName) && !OpenInKeymapsFolder(file, fileName))
        return FailToRead(report, fileName, platform::GetLastErrorCode());
    return ReadFrom(file, fileName, report);
}

bool Keymap::LoadExisting(const VUnicodeString& fileName, VReportMessageParams& report) {
    report.Clear();
    VTextFile file;
    if (!OpenExisting(file, fileName)) return FailToRead(report, fileName, platform::GetLastErrorCode());
    return ReadFrom(file, fileName, report);
}

bool Keymap::ReadFrom(VTextFile& file, const VUnicodeString& fileName, VReportMessageParams& report) {
    KeymapReader reader(*this);
    VUnicodeString line;
    bool isRead = true;
    while (reader.WantsMore() && (isRead = file.ReadLine(line))) reader.ReadLine(line);
    std::uint32_t cause = isRead ? platform::kHandleEof : platform::GetLastErrorCode();
    if (reader.IsTooLong()) cause = platform::kFileTooLarge;
    hasComments = reader.HasComments();
    if (cause != platform::kHandleEof) return FailToRead(report, fileName, cause, reader.GetErrorText());
    if (reader.GetErrorCount() > 0) {
        const bool isBad = reader.GetErrorCount() >= KeymapReader::kMostErrors;
        Report(report, isBad ? kReportBadKeymap : kReportKeymapErrors, fileName, reader.GetErrorText());
        if (isBad) return false;
    }
    defaults = MakeBuiltInKeymap();
    return true;
}

bool Keymap::Save(const VUnicodeString& fileName) {
    std::u16string text;
    for (const VUnicodeString& line : FormatBindings(entries)) text.append(line.View()).append(u"\r\n");
    std::string bytes;
    if (!EncodeText(TextEncoding::kUtf8, text, bytes)) return platform::FailWith(platform::kNoUnicodeTranslation);
    return platform::ReplaceFileWith(fileName, std::string(MarkOf(TextEncoding::kUtf8)) + bytes);
}

bool operator==(const Keymap& a, const Keymap& b) {
    if (a.entries.GetCount() != b.entries.GetCount()) return false;
    for (const auto& [key, entry, next] : a.entries) {
        const Keymap::KeyMapEntry* other = b.entries.Find(key);
        if (other == nullptr || !(*other == entry)) return false;
    }
    if (!a.defaults || !b.defaults) return !a.defaults && !b.defaults;
    return *a.defaults == *b.defaults;
}

}  // namespace connectdialog
