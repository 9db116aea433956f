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

std::unique_ptr<VMenuToolbarItem> MenuItemReader::Read() {
    item = std::make_unique<VMenuToolbarItem>();
    const bool isGood = SetFunction() && (!IsTool() || SetImage()) && SetArgument() && SetTexts() && SetAccelerator();
    return isGood ? std::move(item) : nullptr;
}

bool MenuItemReader::Refuse(std::uint32_t code, std::initializer_list<std::u16string_view> inserts) {
    FillMenuReport(rep.GetWarnings().Add({}), code, lineNumber, inserts);
    return false;
}

bool MenuItemReader::SetFunction() {
    if (line.tokenCount <= kFunction) return Refuse(kMenuLineOutOfPlace);
    const std::u16string_view name = line.tokens[kFunction];
    const VMenuResourceData* table = rep.GetCommandTable();
    const VMenuResourceData::Command* command = table != nullptr ? table->Find(name) : nullptr;
    if (command == nullptr || command->number == 0 || (command->number == kMenuTypePopup && !IsTool()))
        return Refuse(kMenuUnknownFunction, {name});
    item->SetFunctionName(command->name);
    item->SetType(command->number);
    item->SetCommandId(command->number);
    item->SetTakesArgument(TakesArgument(name));
    return true;
}

bool MenuItemReader::SetImage() {
    const std::u16string_view image = TrimmedView(line.tokens[kWhat]);
    if (image.empty()) return Refuse(kMenuNoImage);
    const std::int32_t index = rep.GetCommandTable()->GetBitmapIndex(image);
    if (index == -1) return SetImageFile(image);
    item->SetBitmapIndex(index);
    return true;
}

bool MenuItemReader::SetImageFile(std::u16string_view name) {
    VUnicodeString path(name);
    if (!IsAbsolute(name) && !rep.GetFolder().IsEmpty()) path = VJoinPath(rep.GetFolder().GetData(), path.GetData());
    item->SetBitmap(images.Load(path));
    if (item->GetBitmap() != nullptr) return true;
    VReportMessageParams cause(platform::GetLastErrorCode());
    return Refuse(kMenuBadImage, {path, cause.GetTextOneLine()});
}

bool MenuItemReader::SetArgument() {
    if (line.tokenCount <= kArgument) {
        const auto* function = std::ranges::find(kArgumentFunctions, item->GetType(), &ArgumentFunction::number);
        return function == std::end(kArgumentFunctions) || Refuse(kMenuNoArgument, {function->argument});
    }
    if (line.tokens[kArgument].empty() && line.tokens[kFunction] != kRun) return true;
    const VUnicodeString argument(line.tokens[kArgument]);
    item->SetArgument(argument);
    return line.tokens[kFunction] != kRun || OpensForReading(argument) || Refuse(kMenuNoScript, {argument});
}

bool MenuItemReader::SetTexts() {
    const std::u16string_view key = line.tokens[kStringKey];
    if (line.tokenCount <= kStringKey || (key.empty() && !IsTool())) return true;
    const MenuString* string = rep.FindString(key);
    if (string == nullptr) return Refuse(kMenuUnknownString, {key});
    item->SetPrompt(string->prompt);
    item->SetToolTip(string->toolTip);
    return true;
}

bool MenuItemReader::SetAccelerator() {
    const std::u16string_view key = line.tokens[kAcceleratorKey];
    if (line.tokenCount <= kAcceleratorKey || (key.empty() && !IsTool())) {
        if (!IsTool()) item->SetText(line.tokens[kWhat]);
        return true;
    }
    const AcceleratorRep* accelerator = rep.FindAccelerator(key);
    if (accelerator == nullptr) return Refuse(kMenuUnknownAccelerator, {key});
    if (!IsTool()) ShowAccelerator(*accelerator);
    item->SetAccelerator({accelerator->GetFlags(), accelerator->GetKey(), static_cast<std::uint16_t>(item->GetType())});
    return true;
}

void MenuItemReader::ShowAccelerator(const AcceleratorRep& accelerator) {
    const std::u16string_view label = line.tokens[kWhat];
    const std::u16string_view shown = accelerator.GetShownText();
    VUnicodeString text;
    text.Resize(label.size() + 1 + shown.size());  // appending would copy the label each time
    char16_t* end = std::ranges::copy(label, &text.MutableAt(0)).out;
    *end++ = u'\t';
    std::ranges::copy(shown, end);
    item->SetText(text);
}

}  // namespace connectdialog
