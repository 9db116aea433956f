#include "suite/buttonbar/buttonbardialog.h"

#include <vector>

#include "imports/dialogkit/vmessagebox.h"
#include "keymap/keyfunctiontable.h"
#include "keymap/keynames.h"

namespace connectdialog {

namespace {

using namespace ButtonBarIds;
using enum ControlKind;

constexpr ControlTemplate kControls[] = {
    {kTree, kButtons, u"", {7, 7, 116, 152}},
    {kButton, kAdd, u"添加(&A)", {129, 7, 50, 14}},
    {kButton, kRemove, u"删除(&D)", {129, 25, 50, 14}},
    {kButton, kUp, u"上移(&U)", {129, 49, 50, 14}},
    {kButton, kDown, u"下移(&N)", {129, 67, 50, 14}},
    {kStatic, kNoId, u"功能(&F):", {188, 7, 150, 9}},
    {kComboBox, kFunction, u"", {188, 17, 151, 13}},
    {kStatic, kNoId, u"标签(&L)，可以有两行:", {188, 35, 150, 9}},
    {kMemo, kText, u"", {188, 45, 151, 28}},
    {kStatic, kNoId, u"参数 &1:", {188, 78, 150, 9}},
    {kEdit, kFirstArgument, u"", {188, 88, 151, 13}},
    {kStatic, kNoId, u"参数 &2:", {188, 106, 150, 9}},
    {kEdit, kFirstArgument + 1, u"", {188, 116, 151, 13}},
    {kStatic, kNoId, u"参数 &3:", {188, 134, 150, 9}},
    {kEdit, kFirstArgument + 2, u"", {188, 144, 151, 13}},
    {kDefaultButton, kIdOk, u"确定", {235, 168, 50, 14}},
    {kButton, kIdCancel, u"取消", {289, 168, 50, 14}},
};
constexpr DialogTemplate kTemplate{kDialog, 346, 189, u"编辑按钮栏", kControls};

constexpr int kFields[] = {kFunction, kText, kFirstArgument, kFirstArgument + 1, kFirstArgument + 2};
constexpr std::int32_t kNewFunction = KeyFunctionNumber(u"MENU_CONNECT");

/// All that a button can do, in the order of their numbers.
const std::vector<VUnicodeString>& FunctionNames() {
    static const std::vector<VUnicodeString> names = [] {
        std::vector<VUnicodeString> all;
        for (std::uint32_t i = kKeyFunctionSend; i < std::size(kKeyFunctionNames); ++i)
            if (IsButtonFunction(i)) all.emplace_back(kKeyFunctionNames[i]);
        return all;
    }();
    return names;
}

VUnicodeString RowText(const UserButton& button) {
    const VUnicodeString function = GetFunctionName(button);
    return button.label + u"  (" + (function.IsEmpty() ? u"?"_v : function) + u")";
}

struct FaultRow {
    ButtonFault fault;
    int control;
    const char16_t* text;
};
constexpr FaultRow kFaults[] = {
    {ButtonFault::kNoFunction, kFunction, u"请为按钮选择一个功能。"},
    {ButtonFault::kNoText, kText, u"请输入按钮的标签。"},
    {ButtonFault::kNoArgument, kFirstArgument, u"此功能需要参数 1：要发送的文字，或者要运行的程序。"},
    {ButtonFault::kControl, kText, u"标签和参数中不能有控制字符。"},
    {ButtonFault::kTooManyLines, kText, u"标签最多有两行。"},
    {ButtonFault::kTooLong, kText, u"标签或参数太长。"},
};

/// Of the fields that such a fault can be in, the first in which it is.
int FieldAtFault(UserButton button, ButtonFault fault) {
    button.function = kNewFunction;  // that needs no argument
    VUnicodeString* const arguments[] = {&button.argument1, &button.argument2, &button.argument3};
    for (int i = 2; i >= 0; --i) {
        arguments[i]->Empty();
        if (FindButtonFault(button) != fault) return kFirstArgument + i;
    }
    return kText;
}

}  // namespace

ButtonBarDialog::ButtonBarDialog(UserButtonBar& bar, VWindow* parent)
    : VDialog(kTemplate, parent), bar(bar), list([this](const void* data) { return Choose(data); }) {}

void ButtonBarDialog::OnInitDialog() {
    VDialog::OnInitDialog();
    SetTitle(u"编辑按钮栏 - "_v + bar.GetName());
    SetControlChoices(kFunction, FunctionNames());
    list.Attach(*GetWindow(), kButtons);
    List(0);
}

void ButtonBarDialog::List(std::size_t place) {
    list.Clear();
    TreeItem selected = TreeItem::kNone;
    std::size_t row = 0;
    for (const UserButton& button : bar.GetButtons()) {
        // The list carries the places of its rows as addresses of the buttons, which move only when it is filled anew.
        const TreeItem item = list.Add(TreeItem::kNone, RowText(button), &button);
        if (row++ == place) selected = item;
    }
    chosen = std::min(place, bar.GetCount());
    list.Select(selected);
    ShowFields();
}

void ButtonBarDialog::ShowFields() {
    shown = chosen < bar.GetCount() ? bar.GetButtons()[chosen] : UserButton();
    SetControlText(kFunction, GetFunctionName(shown));
    SetControlText(kText, GetShownText(shown));
    SetControlText(kFirstArgument, shown.argument1);
    SetControlText(kFirstArgument + 1, shown.argument2);
    SetControlText(kFirstArgument + 2, shown.argument3);
    ShowEnabled();
}

void ButtonBarDialog::ShowEnabled() {
    const bool isAny = chosen < bar.GetCount();
    for (const int field : kFields) EnableControl(field, isAny);
    EnableControl(kRemove, isAny);
    EnableControl(kUp, isAny && chosen > 0);
    EnableControl(kDown, chosen + 1 < bar.GetCount());
}

UserButton ButtonBarDialog::ReadFields() const {
    UserButton button;
    const VUnicodeString function = GetControlText(kFunction);
    button.function = function.IsEmpty() ? shown.function : GetKeyFunctionID(function);
    SetButtonText(button, GetControlText(kText));
    button.argument1 = GetControlText(kFirstArgument);
    button.argument2 = GetControlText(kFirstArgument + 1);
    button.argument3 = GetControlText(kFirstArgument + 2);
    return button;
}

bool ButtonBarDialog::Take() {
    if (chosen >= bar.GetCount()) return true;
    const UserButton button = ReadFields();
    if (button == shown) return true;
    const ButtonFault fault = FindButtonFault(button);
    for (const FaultRow& row : kFaults) {
        if (row.fault != fault) continue;
        VMessageBox(this, row.text, kBoxWarning);
        const bool isAnyText = fault == ButtonFault::kControl || fault == ButtonFault::kTooLong;
        FocusControl(isAnyText ? FieldAtFault(button, fault) : row.control);
        return false;
    }
    bar.Set(chosen, button);
    return true;
}

bool ButtonBarDialog::Choose(const void* data) {
    const auto place = static_cast<std::size_t>(static_cast<const UserButton*>(data) - bar.GetButtons().begin());
    if (Take()) List(place);
    return false;  // it was chosen by listing anew
}

bool ButtonBarDialog::OnCommand(int command) {
    switch (command) {
        case kAdd:
            Add();
            return true;
        case kRemove:
            Remove();
            return true;
        case kUp:
        case kDown:
            Move(command == kUp);
            return true;
        default:
            return VDialog::OnCommand(command);
    }
}

/// The row tells what is typed.
void ButtonBarDialog::OnControlChanged(int) {
    if (chosen < bar.GetCount()) list.Items().SetText(list.GetSelected(), RowText(ReadFields()));
}

void ButtonBarDialog::Add() {
    if (!Take()) return;
    UserButton button;
    button.function = kNewFunction;
    SetButtonText(button, u"新按钮"_v);
    const std::size_t place = std::min(chosen + 1, bar.GetCount());
    bar.Insert(place, button);
    List(place);
    FocusControl(kText);
}

void ButtonBarDialog::Remove() {
    bar.Remove(chosen);
    List(chosen > 0 && chosen == bar.GetCount() ? chosen - 1 : chosen);
}

void ButtonBarDialog::Move(bool isUp) {
    if (!Take()) return;
    const std::size_t place = isUp ? chosen - 1 : chosen + 1;
    if (bar.Move(chosen, place)) List(place);
}

void ButtonBarDialog::OnOK() {
    if (Take()) EndDialog(kDialogAccepted);
}

}  // namespace connectdialog
