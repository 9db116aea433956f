// The settings of a terminal window, as they are declared. Their key names and defaults stand in
// terminalconfigload.cpp, their order in the store in terminalconfigmembers.cpp.
#pragma once

#include "keymap/profilekeymap.h"
#include "profile/vlogfont.h"
#include "profile/vprofile.h"
#include "profile/vprofile2.h"
#include "profile/vwindowplacement.h"

namespace connectdialog {

/// A part of the terminal, open to those who edit it. Copies member by member: value, stored copy and missing flag.
/// Colours are 0x00BBGGRR; rows, columns and lines count characters; positions are pixels.
struct TerminalSettings {
    VProfile<bool> ansiColor;
    VProfile<bool> colorSchemeOverridesAnsiColor;
    VProfileText emulation;  ///< always one that is known
    VProfileText defaultScs;
    VProfile<int> keypadMode;
    VProfile<bool> lineWrap;
    VProfile<bool> cursorKeyMode;
    VProfile<bool> newlineMode;
    VProfile<bool> enableColumnSwitching;
    VProfile<bool> enableCursorKeyModeSwitching;
    VProfile<bool> enableKeypadModeSwitching;
    VProfile<bool> enableLineWrapModeSwitching;
    VProfile<bool> waitForStringsIgnoresColor;
    VProfile<bool> sgrZeroResetsAnsiColor;
    VProfile<bool> scoLineWrap;
    VProfile<bool> displayTab;
    VProfileText displayTabString;
    VProfileWindowPlacement windowPlacement;
    VProfile<bool> isFullScreen;
    VProfile<int> rows;
    VProfile<short> cols;
    VProfile<int> scrollback;
    VProfile<int> resizeMode;  ///< with 1, both switches below are off
    VProfile<bool> syncViewRows;
    VProfile<bool> syncViewCols;
    VProfile<VTriState> horizontalScrollbar;
    VProfile<VTriState> verticalScrollbar;
    VProfileText colorScheme;
    VProfileLogFont normalFont;
    VProfileLogFont narrowFont;
    VProfile<bool> useNarrowFont;
    VProfileText outputTransformerName;
    VProfile<bool> useUnicodeLineDrawing;
    VProfile<bool> blinkingCursor;
    VProfile<int> cursorStyle;
    VProfile<bool> useCursorColor;
    VProfile<int> cursorColor;
    VProfile<int> foreground;
    VProfile<int> background;
    VProfile<int> bold;
    VProfile<bool> mapDelete;
    VProfile<bool> mapBackspace;
    VProfileText keymapName;
    VProfileText keymapFilename;
    VProfile<bool> useAlternateKeyboard;
    VProfile<bool> emacsMode;
    VProfile<bool> emacsMode8Bit;
    VProfile<bool> preserveAltGr;
    ProfileKeymap keymap;
    VProfile<bool> jumpScroll;
    VProfile<bool> minimizeDrawing;
    VProfile<bool> audioBell;
    VProfile<bool> visualBell;
    VProfile<bool> scrollToClear;
    VProfile<bool> closeOnDisconnect;
    VProfile<bool> clearOnDisconnect;
    VProfile<bool> scrollToBottomOnOutput;
    VProfile<bool> scrollToBottomOnKeypress;
    VProfile<bool> cuaCopyPaste;
    VProfile<bool> useTerminalType;
    VProfileText terminalType;
    VProfile<bool> useAnswerback;
    VProfileText answerback;
    VProfile<bool> usePosition;
    VProfile<int> xPosition;
    VProfile<bool> xPositionRelativeLeft;
    VProfile<int> yPosition;
    VProfile<bool> yPositionRelativeTop;
    VProfile<bool> localEcho;
    VProfile<bool> strip8thBit;
    VProfile<bool> shiftForcesLocalMouse;
    VProfile<bool> ignoreWindowTitleChanges;
    VProfile<bool> copyTranslatesLineDrawing;
    VProfile<bool> translateIncomingCr;
    VProfile<bool> dumbTerminalIgnoresCrLf;
    VProfile<bool> useSymbolicNames;
    VProfile<VTriState> showChatWindow;
    VProfile<VTriState> userButtonBar;
    VProfileText userButtonBarName;
    VProfileText userFontMap;         ///< the template of a file's name; see config/terminalmap.h
    VProfileText userLineDrawingMap;  ///< the same
};

}  // namespace connectdialog
