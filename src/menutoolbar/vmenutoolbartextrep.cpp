#include "menutoolbar/vmenutoolbartextrep.h"

#include <algorithm>
#include <utility>

#include "menutoolbar/menuitemreader.h"
#include "menutoolbar/menureports.h"
#include "platform/lasterror.h"

namespace connectdialog {

namespace {

/// Tables of names that grow move all that they hold; these are large enough for any file that a person writes.
constexpr std::size_t kNamesToBeginWith = 1000;

MenuBlockKind BlockKindOf(MenuLineKind kind) {
    if (kind == MenuLineKind::kToolbar) return MenuBlockKind::kToolbar;
    return kind == MenuLineKind::kMenu ? MenuBlockKind::kMenu : MenuBlockKind::kPopup;
}

}  // namespace

void VMenuToolbarTextRep::Reset() {
    VMenuToolbarRep::Reset();
    file.Close();
    lineCount = 0;
    strayLine = 0;
}

void VMenuToolbarTextRep::StartOver() {
    DropContents();
    accelerators.reserve(kNamesToBeginWith);
    strings.reserve(kNamesToBeginWith);
    menusByName.reserve(kNamesToBeginWith);
    lineCount = 0;
    strayLine = 0;
    characterCount = 0;
    images = MenuImages();
}

MenuParseResult VMenuToolbarTextRep::Parse() {
    StartOver();
    file.SetShareMode(platform::kShareRead);
    if (!file.Open(fileName, platform::kGenericRead, platform::kOpenExisting)) {
        FailToRead();
        return MenuParseResult::kFailed;
    }
    const MenuParseResult result = ReadAll();
    file.Close();
    images = MenuImages();
    return result;
}

MenuParseResult VMenuToolbarTextRep::ParseText(std::u16string_view newText) {
    StartOver();
    unread = &newText;
    const MenuParseResult result = ReadAll();
    unread = nullptr;
    images = MenuImages();
    return result;
}

MenuParseResult VMenuToolbarTextRep::ReadAll() {
    MenuParseResult result = MenuParseResult::kClean;
    while (ReadLine()) {
        const Outcome outcome = ReadTopLevelLine();
        if (outcome == Outcome::kFatal) return MenuParseResult::kFailed;
        if (outcome == Outcome::kStray) result = MenuParseResult::kFailed;
        if (outcome == Outcome::kWarned) result = MenuParseResult::kWarnings;
    }
    if (error.GetCode() != 0) return MenuParseResult::kFailed;
    if (result != MenuParseResult::kClean || !IsEmpty()) return result;
    error.SetMessage(kMenuFileEmpty);
    error.AddInsert(fileName.GetData());
    return MenuParseResult::kFailed;
}

VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::ReadTopLevelLine() {
    if (!line.isValid) return ReportUnbalancedQuote();
    switch (line.kind) {
        case MenuLineKind::kMenu:
        case MenuLineKind::kToolbar:
        case MenuLineKind::kPopupMenu:
            return ReadTopLevelBlock();
        case MenuLineKind::kAccelerator:
            return ReadAccelerators();
        case MenuLineKind::kStringTable:
            return ReadStrings();
        case MenuLineKind::kFont:
            return ReadFont();
        default:
            strayLine = lineCount;
            return Outcome::kStray;
    }
}

VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::ReadFont() {
    if (line.Token(0).empty()) return Warn(kMenuLineOutOfPlace);
    const bool isSecond = !font.IsEmpty();
    font = line.Token(0);
    return isSecond ? Warn(kMenuSecondFont) : Outcome::kGood;
}

VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::ReadTopLevelBlock() {
    auto block = MakeMenuEntry<VMenuToolbar>(memory, BlockKindOf(line.kind), memory);
    const VUnicodeString name(line.Token(0));
    const Outcome outcome = ReadBlock(*block, name, 0);
    if (outcome != Outcome::kFatal) AddMenu(name, std::move(block));
    return outcome;
}

VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::ReadBlock(VMenuToolbar& block, const VUnicodeString& name,
                                                            int depth) {
    if (FindMenu(name) != nullptr) return Fail(kMenuNameTwice, {name});
    block.SetText(name);
    return ReadUntilEnd([&] { return ReadBlockLine(block, depth); });
}

VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::ReadBlockLine(VMenuToolbar& block, int depth) {
    const bool isToolbar = block.GetKind() == MenuBlockKind::kToolbar;
    switch (line.kind) {
        case MenuLineKind::kMenu:
        case MenuLineKind::kToolbar:
        case MenuLineKind::kAccelerator:
        case MenuLineKind::kStringTable:
        case MenuLineKind::kFont:
            return Fail(kMenuKeywordOutOfPlace);
        case MenuLineKind::kSeparator: {
            auto separator = MakeMenuEntry<VMenuToolbarItem>(memory);
            separator->SetType(kMenuTypeSeparator);
            block.Append(std::move(separator));
            return Outcome::kGood;
        }
        case MenuLineKind::kPopupMenu:
            return isToolbar ? Warn(kMenuLineOutOfPlace) : ReadPopup(block, depth);
        case MenuLineKind::kMenuItem:
            return isToolbar ? Warn(kMenuLineOutOfPlace) : ReadItem(block);
        case MenuLineKind::kToolbarItem:
            return isToolbar ? ReadItem(block) : Warn(kMenuLineOutOfPlace);
        default:
            return Warn(kMenuLineOutOfPlace);
    }
}

VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::ReadPopup(VMenuToolbar& parent, int depth) {
    if (depth == kDeepestPopup) return Fail(kMenuKeywordOutOfPlace);
    auto popup = MakeMenuEntry<VMenuToolbar>(memory, MenuBlockKind::kPopup, memory);
    popup->SetType(kMenuTypePopup);
    const Outcome outcome = ReadBlock(*popup, line.Token(0), depth + 1);
    if (outcome != Outcome::kFatal) parent.Append(std::move(popup));
    return outcome;
}

VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::ReadItem(VMenuToolbar& block) {
    MenuEntryPtr<VMenuToolbarItem> item = MenuItemReader(*this, images, line, lineCount).Read();
    if (item == nullptr) return Outcome::kWarned;
    block.Append(std::move(item));
    return Outcome::kGood;
}

VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::ReadAccelerators() {
    return ReadUntilEnd(
        [&] { return ReadDefinition(accelerators, kMenuAcceleratorTwice, line.Token(1), line.Token(2)); });
}

VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::ReadStrings() {
    return ReadUntilEnd([&] { return ReadDefinition(strings, kMenuStringTwice, line.Token(1)); });
}

/// Reads the lines of a block up to its END, `readEntry` one that is valid and not END.
template <class ReadEntry>
VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::ReadUntilEnd(ReadEntry readEntry) {
    Outcome result = Outcome::kGood;
    while (ReadLine()) {
        if (line.kind == MenuLineKind::kEnd) return result;
        const Outcome outcome = line.isValid ? readEntry() : ReportUnbalancedQuote();
        if (outcome == Outcome::kFatal) return outcome;
        if (outcome != Outcome::kGood) result = outcome;
    }
    return error.GetCode() != 0 ? Outcome::kFatal : Fail(kMenuKeywordOutOfPlace);
}

/// Reads a line that gives a name to what `operands` make.
template <class T, class... Operands>
VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::ReadDefinition(MenuNameMap<T>& definitions, std::uint32_t twice,
                                                                 const Operands&... operands) {
    if (line.kind != MenuLineKind::kData) return Fail(kMenuKeywordOutOfPlace);
    if (line.tokenCount < 2) return Warn(kMenuLineOutOfPlace);
    const bool isNew = definitions.try_emplace(KeepMenuName(memory, line.Token(0)), operands...).second;
    return isNew ? Outcome::kGood : Fail(twice);
}

/// Goes on to the next line that is neither blank nor a comment. False at the end of the file, and with the error set
/// when it cannot be read to its end.
bool VMenuToolbarTextRep::ReadLine() {
    std::u16string_view text;
    while (ReadNextLine(text)) {
        ++lineCount;
        characterCount += text.size();
        if (lineCount > kMostLines || characterCount > kMostCharacters) {
            platform::SetLastErrorCode(platform::kFileTooLarge);
            FailToRead();
            return false;
        }
        const std::u16string_view prepared = PrepareMenuLine(text);
        if (prepared.empty()) continue;
        ReadMenuLine(prepared, line);
        return true;
    }
    if (platform::GetLastErrorCode() != platform::kHandleEof) FailToRead();
    return false;
}

bool VMenuToolbarTextRep::ReadNextLine(std::u16string_view& next) {
    if (unread == nullptr) return file.ReadLineView(next);
    if (unread->empty()) return platform::FailWith(platform::kHandleEof);
    next = unread->substr(0, unread->find(u'\n'));
    unread->remove_prefix(std::min(next.size() + 1, unread->size()));
    return true;
}

VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::ReportUnbalancedQuote() {
    switch (line.kind) {
        case MenuLineKind::kMenu:
        case MenuLineKind::kToolbar:
        case MenuLineKind::kPopupMenu:
        case MenuLineKind::kFont:
            return Fail(kMenuUnbalancedQuote, {fileName});
        default:
            return Warn(kMenuUnbalancedQuote, {fileName});
    }
}

VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::Warn(std::uint32_t code,
                                                       std::initializer_list<std::u16string_view> inserts) {
    FillMenuReport(warnings.Add({}), code, lineCount, inserts);
    return Outcome::kWarned;
}

VMenuToolbarTextRep::Outcome VMenuToolbarTextRep::Fail(std::uint32_t code,
                                                       std::initializer_list<std::u16string_view> inserts) {
    FillMenuReport(error, code, lineCount, inserts);
    return Outcome::kFatal;
}

/// With the system's error, for what keeps the file from being read.
void VMenuToolbarTextRep::FailToRead() {
    error.SetMessage(platform::GetLastErrorCode());
    error.SetUserData(lineCount);
    error.AddInsert(fileName.GetData());
}

}  // namespace connectdialog
