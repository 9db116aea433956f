#include "keymap/builtinkeymap.h"

#include "keymap/keymapreader.h"
#include "keymap/keynames.h"

namespace connectdialog {

namespace {

/// Keys that have no name are 0xBD, 0xBF and 0xDC: minus, slash and backslash of the US keyboard.
constexpr std::u16string_view kBuiltInBindings[] = {
    u"N VK_F1 VT_PF1",
    u"N VK_F2 VT_PF2",
    u"N VK_F3 VT_PF3",
    u"N VK_F4 VT_PF4",
    uR"(C VK_SPACE "\000")",
    uR"(C VK_2 "\000")",
    uR"(CS VK_2 "\000")",
    uR"(CS VK_AT "\000")",
    uR"(N VK_BACK "\010")",
    uR"(S VK_BACK "\010")",
    uR"(C VK_BACK "\177")",
    uR"(C 0xDC "\034")",
    uR"(C VK_BACKSLASH "\034")",
    uR"(C VK_6 "\036")",
    uR"(CS VK_6 "\036")",
    uR"(CS VK_ASCIICIRCUM "\036")",
    uR"(C 0xBF "\037")",
    uR"(C VK_SLASH "\037")",
    uR"(CS 0xBF "\037")",
    uR"(CS VK_QUESTION "\037")",
    uR"(CS 0xBD "\037")",
    uR"(CS VK_UNDERSCORE "\037")",
    u"N VK_PRIOR SB_PAGE_UP",
    u"E VK_PRIOR SB_PAGE_UP",
    u"N VK_NEXT SB_PAGE_DOWN",
    u"E VK_NEXT SB_PAGE_DOWN",
    u"C VK_PRIOR SB_LINE_UP",
    u"CE VK_PRIOR SB_LINE_UP",
    u"C VK_NEXT SB_LINE_DOWN",
    u"CE VK_NEXT SB_LINE_DOWN",
    u"N VK_END SB_END",
    u"E VK_END SB_END",
    uR"(N VK_DELETE "\177")",
    uR"(S VK_DELETE "\177")",
    uR"(E VK_DELETE "\177")",
    uR"(SE VK_DELETE "\177")",
    u"N VK_UP VT_CURSOR_UP",
    u"E VK_UP VT_CURSOR_UP",
    u"N VK_DOWN VT_CURSOR_DOWN",
    u"E VK_DOWN VT_CURSOR_DOWN",
    u"N VK_LEFT VT_CURSOR_LEFT",
    u"E VK_LEFT VT_CURSOR_LEFT",
    u"N VK_RIGHT VT_CURSOR_RIGHT",
    u"E VK_RIGHT VT_CURSOR_RIGHT",
    u"C VK_PAUSE TN_BREAK",
};

/// The functions that have their default keys here too.
constexpr std::u16string_view kFunctionsWithDefaultKeys[] = {
    u"MENU_TAB_NEXT", u"MENU_TAB_PREV", u"MENU_TAB_CLOSE", u"MENU_TOGGLE_FULL_SCREEN",
    u"MENU_TAB_1",    u"MENU_TAB_2",    u"MENU_TAB_3",     u"MENU_TAB_4",
    u"MENU_TAB_5",    u"MENU_TAB_6",    u"MENU_TAB_7",     u"MENU_TAB_8",
    u"MENU_TAB_9",    u"MENU_TAB_10"};

}  // namespace

std::unique_ptr<Keymap> MakeBuiltInKeymap() {
    auto keymap = std::make_unique<Keymap>();
    KeymapReader reader(*keymap);
    for (const std::u16string_view line : kBuiltInBindings) reader.ReadLine(line);
    std::vector<std::uint32_t> keys;
    for (const std::u16string_view name : kFunctionsWithDefaultKeys) {
        const auto function = static_cast<std::uint32_t>(GetKeyFunctionID(name));
        GetDefaultKeys(function, keys);
        for (const std::uint32_t key : keys) keymap->SetKeyFunction(key, function);
    }
    return keymap;
}

}  // namespace connectdialog
