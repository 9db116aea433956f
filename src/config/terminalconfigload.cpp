// How a terminal is read from its key: the name, the default and the correction of each member. The order is not that
// of the store: defaults follow from what was read before.
#include <algorithm>
#include <iterator>
#include <string_view>

#include "config/emulations.h"
#include "config/terminalconfig.h"
#include "imports/configpanels.h"
#include "profile/vprofilekey.h"

namespace connectdialog {

namespace {

/// What takes the place of an emulation that is not known.
constexpr const Emulation& kUsualEmulation = kEmulations[0];
static_assert(kUsualEmulation.name == u"VT100");

constexpr int kBlack = 0;
constexpr int kWhite = 0xFFFFFF;

const Emulation& FindEmulation(std::u16string_view name, bool hasKelda) {
    const Emulation* const found = std::ranges::find(kEmulations, name, &Emulation::name);
    return found == std::end(kEmulations) || (found->needsKelda && !hasKelda) ? kUsualEmulation : *found;
}

/// An emulation, and the keymap that goes with it, was once spelled differently.
void RenameScoAnsi(VProfileText& name) {
    if (name.Get() == u"SCO-ANSI") name.Set(u"SCOANSI"_v);
}

/// A correction changes the value and not the stored copy: the session shows as changed.
template <class T>
void CutDown(VProfile<T>& value, const VProfile<T>& most) {
    value.Set(std::min(value.Get(), most.Get()));
}

/// These fonts have line drawing characters in places of their own.
bool DrawsLinesItsOwnWay(const VLogFont& font) {
    return font.GetFace().starts_with(u"vt100") || font.GetFace() == u"Terminal";
}

}  // namespace

TerminalConfig::TerminalConfig(VProfileKey* key, bool hasKelda) {
    LoadEmulation(key, hasKelda);
    LoadScreen(key);
    LoadResizing(key);
    LoadColors(key);
    LoadFonts(key);
    LoadCursor(key);
    LoadKeyboard(key);
    LoadModes(key);
    LoadBehavior(key);
    LoadIdentity(key);
    LoadTranslation(key);
    LoadUserParts(key);
}

void TerminalConfig::LoadEmulation(VProfileKey* key, bool hasKelda) {
    emulation.Load(key, u"Emulation"_v, u"VT100"_v);
    RenameScoAnsi(emulation);
    const Emulation& known = FindEmulation(emulation.Get(), hasKelda);
    if (emulation.Get() != known.name) emulation.Set(VUnicodeString(known.name));
    ansiColor.Load(key, u"ANSI Color"_v, known.hasAnsiColor);
    colorSchemeOverridesAnsiColor.Load(key, u"Color Scheme Overrides Ansi Color"_v, false);
    defaultScs.Load(key, u"Default SCS"_v, u"B"_v);
}

void TerminalConfig::LoadScreen(VProfileKey* key) {
    windowPlacement.Load(key, u"Window Placement"_v, VWindowPlacement::Unplaced());
    isFullScreen.Load(key, u"Is Full Screen"_v, false);
    rows.Load(key, u"Rows"_v, 24);
    cols.Load(key, u"Cols"_v, 80);
    scrollback.Load(key, u"Scrollback"_v, 500);
    VRef<GlobalConfig> global;
    if (!GetGlobalConfig(global, -1)) return;
    CutDown(cols, global->maximumCols);
    CutDown(scrollback, global->maximumScrollback);
}

/// The mode is younger than the two switches, and one of its states makes them mean nothing.
void TerminalConfig::LoadResizing(VProfileKey* key) {
    constexpr int kKeepsTheSize = 1;
    constexpr int kUnsynchronized = 2;
    syncViewRows.Load(key, u"Sync View Rows"_v, true);
    syncViewCols.Load(key, u"Sync View Cols"_v, true);
    const bool isSynchronized = syncViewRows.Get() || syncViewCols.Get();
    resizeMode.Load(key, u"Resize Mode"_v, isSynchronized ? 0 : kUnsynchronized);
    if (resizeMode.Get() == kKeepsTheSize) {
        syncViewRows.Set(false);
        syncViewCols.Set(false);
    }
    horizontalScrollbar.Load(key, u"Horizontal Scrollbar"_v, VTriState::kFollowGlobal);
    verticalScrollbar.Load(key, u"Vertical Scrollbar"_v, VTriState::kFollowGlobal);
}

void TerminalConfig::LoadColors(VProfileKey* key) {
    const bool isLightOnDark = emulation.Get() == u"ANSI";
    foreground.Load(key, u"Foreground"_v, isLightOnDark ? kWhite : kBlack);
    background.Load(key, u"Background"_v, isLightOnDark ? kBlack : kWhite);
    bold.Load(key, u"Bold"_v, isLightOnDark ? kWhite : kBlack);
    colorScheme.Load(key, u"Color Scheme"_v, u"Monochrome"_v);
}

/// Fonts were once a face and a size, one for both; these are read and never written.
void TerminalConfig::LoadFonts(VProfileKey* key) {
    const bool isAnsi = emulation.Get() == u"ANSI";
    VProfileText family;
    VProfile<int> size;
    family.Load(key, u"Font Family"_v, isAnsi ? u"Terminal"_v : u"Lucida Console"_v);
    size.Load(key, u"Font Size"_v, isAnsi ? 12 : 13);
    const VLogFont usual(size.Get(), family.Get());
    normalFont.Load(key, u"Normal Font v2"_v, usual);
    narrowFont.Load(key, u"Narrow Font v2"_v, usual);
    useNarrowFont.Load(key, u"Use Narrow Font"_v, false);
    outputTransformerName.Load(key, u"Output Transformer Name"_v, u"Default"_v);
    const bool drawsLines =
        DrawsLinesItsOwnWay(normalFont.Get()) && (!useNarrowFont.Get() || DrawsLinesItsOwnWay(narrowFont.Get()));
    useUnicodeLineDrawing.Load(key, u"Use Unicode Line Drawing"_v, !drawsLines);
}

void TerminalConfig::LoadCursor(VProfileKey* key) {
    blinkingCursor.Load(key, u"Blinking Cursor"_v, true);
    cursorStyle.Load(key, u"Cursor Style"_v, 0);
    useCursorColor.Load(key, u"Use Cursor Color"_v, false);
    cursorColor.Load(key, u"Cursor Color"_v, 0);
}

void TerminalConfig::LoadKeyboard(VProfileKey* key) {
    mapDelete.Load(key, u"Map Delete"_v, false);
    mapBackspace.Load(key, u"Map Backspace"_v, false);
    keymapName.Load(key, u"Keymap Name"_v, emulation.Get() == u"VT220" ? u"VT220"_v : u"Default"_v);
    keymapFilename.Load(key, u"Keymap Filename"_v, VUnicodeString());
    useAlternateKeyboard.Load(key, u"Use Alternate Keyboard"_v, false);
    // The switch is younger than the name: a key without it means on when it names a keymap of its own.
    const bool isOlder = useAlternateKeyboard.IsMissing();
    if (keymapName.Get().EqualsNoCase(u"Custom")) useAlternateKeyboard.Set(true);
    RenameScoAnsi(keymapName);
    if (isOlder && !keymapName.Get().EqualsNoCase(u"Default")) useAlternateKeyboard.Set(true);
    emacsMode.Load(key, u"Emacs Mode"_v, false);
    emacsMode8Bit.Load(key, u"Emacs Mode 8 Bit"_v, false);
    preserveAltGr.Load(key, u"Preserve Alt-Gr"_v, false);
    keymap.LoadNewest(key);
}

void TerminalConfig::LoadModes(VProfileKey* key) {
    jumpScroll.Load(key, u"Jump Scroll"_v, true);
    minimizeDrawing.Load(key, u"Minimize Drawing While Jump Scrolling"_v, false);
    keypadMode.Load(key, u"Keypad Mode"_v, 0);
    lineWrap.Load(key, u"Line Wrap"_v, true);
    cursorKeyMode.Load(key, u"Cursor Key Mode"_v, false);
    newlineMode.Load(key, u"Newline Mode"_v, false);
    VProfile<bool> olderSwitching;  // read and never written
    olderSwitching.Load(key, u"Enable 80/132 Column Switching"_v, true);
    enableColumnSwitching.Load(key, u"Enable 80-132 Column Switching"_v, olderSwitching.Get());
    enableCursorKeyModeSwitching.Load(key, u"Enable Cursor Key Mode Switching"_v, true);
    enableKeypadModeSwitching.Load(key, u"Enable Keypad Mode Switching"_v, true);
    enableLineWrapModeSwitching.Load(key, u"Enable Line Wrap Mode Switching"_v, true);
    waitForStringsIgnoresColor.Load(key, u"WaitForStrings Ignores Color"_v, false);
    sgrZeroResetsAnsiColor.Load(key, u"SGR Zero Resets ANSI Color"_v, true);
    scoLineWrap.Load(key, u"SCO Line Wrap"_v, false);
    displayTab.Load(key, u"Display Tab"_v, false);
    displayTabString.Load(key, u"Display Tab String"_v, VUnicodeString());
}

void TerminalConfig::LoadBehavior(VProfileKey* key) {
    audioBell.Load(key, u"Audio Bell"_v, true);
    visualBell.Load(key, u"Visual Bell"_v, false);
    scrollToClear.Load(key, u"Scroll To Clear"_v, true);
    closeOnDisconnect.Load(key, u"Close On Disconnect"_v, false);
    clearOnDisconnect.Load(key, u"Clear On Disconnect"_v, false);
    scrollToBottomOnOutput.Load(key, u"Scroll To Bottom On Output"_v, true);
    scrollToBottomOnKeypress.Load(key, u"Scroll To Bottom On Keypress"_v, true);
    cuaCopyPaste.Load(key, u"CUA Copy Paste"_v, false);
}

void TerminalConfig::LoadIdentity(VProfileKey* key) {
    useTerminalType.Load(key, u"Use Terminal Type"_v, false);
    terminalType.Load(key, u"Terminal Type"_v, VUnicodeString());
    useAnswerback.Load(key, u"Use Answerback"_v, false);
    answerback.Load(key, u"Answerback"_v, VUnicodeString());
    usePosition.Load(key, u"Use Position"_v, false);
    xPosition.Load(key, u"X Position"_v, 0);
    xPositionRelativeLeft.Load(key, u"X Position Relative Left"_v, true);
    yPosition.Load(key, u"Y Position"_v, 0);
    yPositionRelativeTop.Load(key, u"Y Position Relative Top"_v, true);
}

void TerminalConfig::LoadTranslation(VProfileKey* key) {
    localEcho.Load(key, u"Local Echo"_v, false);
    strip8thBit.Load(key, u"Strip 8th Bit"_v, false);
    shiftForcesLocalMouse.Load(key, u"Shift Forces Local Mouse Operations"_v, true);
    ignoreWindowTitleChanges.Load(key, u"Ignore Window Title Change Requests"_v, false);
    copyTranslatesLineDrawing.Load(key, u"Copy Translates ANSI Line Drawing Characters"_v, false);
    translateIncomingCr.Load(key, u"Translate Incoming CR To CRLF"_v, false);
    dumbTerminalIgnoresCrLf.Load(key, u"Dumb Terminal Ignores CRLF"_v, false);
    useSymbolicNames.Load(key, u"Use Symbolic Names For Non-Printable Characters"_v, false);
}

void TerminalConfig::LoadUserParts(VProfileKey* key) {
    showChatWindow.Load(key, u"Show Chat Window"_v, VTriState::kFollowGlobal);
    userButtonBar.Load(key, u"User Button Bar"_v, VTriState::kFollowGlobal);
    userButtonBarName.Load(key, u"User Button Bar Name"_v, u"Default"_v);
    userFontMap.Load(key, u"User Font Map"_v, VUnicodeString());
    userLineDrawingMap.Load(key, u"User Line Drawing Map"_v, VUnicodeString());
    if (!userFontMap.Get().IsEmpty()) fontMap = ReadTerminalMap(userFontMap.Get());
    if (!userLineDrawingMap.Get().IsEmpty()) lineDrawingMap = ReadTerminalMap(userLineDrawingMap.Get());
}

}  // namespace connectdialog
