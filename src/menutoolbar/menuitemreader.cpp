#include "menutoolbar/menuitemreader.h"

#include <algorithm>
#include <iterator>

#include "foundation/vfile.h"
#include "foundation/vpath.h"
#include "menutoolbar/menureports.h"
#include "platform/lasterror.h"

namespace connectdialog {

namespace {

/// Places of the operands.
enum Operand : std::size_t { kWhat, kFunction, kArgument, kStringKey, kAcceleratorKey };

constexpr std::u16string_view kRun = u"RUN";

struct ArgumentFunction {
    std::uint32_t number;
    std::u16string_view name;
    std::u16string_view argument;  ///< as warnings call it
};
constexpr ArgumentFunction kArgumentFunctions[] = {
    {kMenuTypeSend, u"SEND", u"send string"},
    {kMenuTypeRun, kRun, u"script file"},
    {kMenuTypeOpenSession, u"OPEN_SESSION", u"open session"},
    {kMenuTypeOpenSessionTab, u"OPEN_SESSION_TAB", u"open session in tab"},
};

bool TakesArgument(std::u16string_view function) {
    return std::ranges::find(kArgumentFunctions, function, &ArgumentFunction::name) != std::end(kArgumentFunctions);
}

bool OpensForReading(const VUnicodeString& name) {
    VFile file;
    file.SetShareMode(platform::kShareRead);
    return file.Open(VResolveDotPath(name), platform::kGenericRead, platform::kOpenExisting);
}

/// A share, a name with a drive, or a path from the root of the file system.
bool IsAbsolute(std::u16string_view name) {
    return name.starts_with(u"\\\\") || name.find(u":\\") != name.npos || name.starts_with(u'/');
}

}  // namespace

MenuEntryPtr<VMenuToolbarItem> MenuItemReader::Read() {
    const bool isGood =
        FindFunction() && (!IsTool() || FindImage()) && CheckArgument() && FindTexts() && FindAccelerator();
    return isGood ? MakeItem() : nullptr;
}

bool MenuItemReader::Refuse(std::uint32_t code, std::initializer_list<std::u16string_view> inserts) {
    FillMenuReport(rep.GetWarnings().Add({}), code, lineNumber, inserts);
    return false;
}

bool MenuItemReader::FindFunction() {
    if (line.tokenCount <= kFunction) return Refuse(kMenuLineOutOfPlace);
    const std::u16string_view name = line.Token(kFunction);
    const VMenuResourceData* table = rep.GetCommandTable();
    command = table != nullptr ? table->Find(name) : nullptr;
    const bool isKnown = command != nullptr && command->number != 0;
    return (isKnown && (command->number != kMenuTypePopup || IsTool())) || Refuse(kMenuUnknownFunction, {name});
}

bool MenuItemReader::FindImage() {
    const std::u16string_view image = TrimmedView(line.Token(kWhat));
    if (image.empty()) return Refuse(kMenuNoImage);
    bitmapIndex = rep.GetCommandTable()->GetBitmapIndex(image);
    return bitmapIndex != -1 || LoadImage(image);
}

bool MenuItemReader::LoadImage(std::u16string_view name) {
    VUnicodeString path(name);
    if (!IsAbsolute(name) && !rep.GetFolder().IsEmpty()) path = VJoinPath(rep.GetFolder().GetData(), path.GetData());
    bitmap = images.Load(path);
    if (bitmap != nullptr) return true;
    VReportMessageParams cause(platform::GetLastErrorCode());
    return Refuse(kMenuBadImage, {path, cause.GetTextOneLine()});
}

bool MenuItemReader::CheckArgument() {
    if (line.tokenCount <= kArgument) {
        const auto* function = std::ranges::find(kArgumentFunctions, command->number, &ArgumentFunction::number);
        return function == std::end(kArgumentFunctions) || Refuse(kMenuNoArgument, {function->argument});
    }
    const std::u16string_view script = line.Token(kArgument);
    return line.Token(kFunction) != kRun || OpensForReading(script) || Refuse(kMenuNoScript, {script});
}

bool MenuItemReader::HasKey(std::size_t operand) const {
    return line.tokenCount > operand && (IsTool() || !line.Token(operand).empty());
}

bool MenuItemReader::FindTexts() {
    if (!HasKey(kStringKey)) return true;
    texts = rep.FindString(line.Token(kStringKey));
    return texts != nullptr || Refuse(kMenuUnknownString, {line.Token(kStringKey)});
}

bool MenuItemReader::FindAccelerator() {
    // With more operands than there are the key counts for nothing.
    if (line.tokenCount != MenuLine::kMostTokens || !HasKey(kAcceleratorKey)) return true;
    accelerator = rep.FindAccelerator(line.Token(kAcceleratorKey));
    return accelerator != nullptr || Refuse(kMenuUnknownAccelerator, {line.Token(kAcceleratorKey)});
}

VUnicodeString MenuItemReader::MakeText() const {
    if (IsTool()) return {};
    if (accelerator != nullptr) return accelerator->ShowBehind(line.Token(kWhat));
    return line.Token(kWhat);
}

MenuEntryPtr<VMenuToolbarItem> MenuItemReader::MakeItem() const {
    const VUnicodeString none;
    auto item = MakeMenuEntry<VMenuToolbarItem>(rep.GetMemory(), MakeText(), command->name, line.Token(kArgument),
                                                texts != nullptr ? texts->toolTip : none,
                                                texts != nullptr ? texts->prompt : none);
    item->SetType(command->number);
    item->SetCommandId(command->number);
    item->SetTakesArgument(TakesArgument(command->name));
    item->SetBitmapIndex(bitmapIndex);
    if (bitmap != nullptr) item->SetBitmap(bitmap);
    if (accelerator != nullptr) {
        item->SetAccelerator(
            {accelerator->GetFlags(), accelerator->GetKey(), static_cast<std::uint16_t>(command->number)});
    }
    return item;
}

}  // namespace connectdialog
