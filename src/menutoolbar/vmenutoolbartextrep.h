// Descriptions of menus and toolbars as text files that users edit.
//
//   file        = { menu | toolbar | popup | accelerators | strings | font }
//   menu        = "MENU " name { popup | "SEPARATOR" | menu item } "END"
//   toolbar     = "TOOLBAR " name { "SEPARATOR" | toolbar item } "END"
//   popup       = "POPUPMENU" name { popup | "SEPARATOR" | menu item } "END"
//                                       at the top a context menu of that name, else a submenu with it as label
//   menu item   = "MENUITEM" operands of an item          see menuitemreader.h
//   toolbar item = "TOOLBARITEM" operands of an item
//   accelerators = "ACCELERATOR" { key "," character [ "," modifiers ] } "END"
//   strings     = "STRINGTABLE" { key "," prompt [ `\n` tool tip ] } "END"
//   font        = "FONT" face name
//
// Each stands on a line of its own (see menuline.h). A fault of structure is an error: reading stops. A fault of one
// line is a warning: the line is left out. A line at the top that begins none of these makes the file unusable too,
// unless a warning comes after it.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "foundation/vtextfile.h"
#include "menutoolbar/menuimage.h"
#include "menutoolbar/menuline.h"
#include "menutoolbar/vmenutoolbarrep.h"

namespace connectdialog {

/// Takes untrusted files: time and memory grow with the file and no faster, and both are bounded.
class VMenuToolbarTextRep : public VMenuToolbarRep {
  public:
    /// A longer file is refused with the error 223.
    static constexpr std::uint32_t kMostLines = 65536;
    static constexpr std::size_t kMostCharacters = VTextFile::kLongestLine;
    /// Popups in popups; a deeper one is a keyword out of place.
    static constexpr int kDeepestPopup = 32;

    void Reset() override;
    /// On kFailed the error is one of menureports.h; one of the system's with the file's name as insert when the file
    /// cannot be opened (2, 5…) or read to its end (1113: malformed UTF-8, 223: too long); or none, and then
    /// GetStrayLine tells why.
    MenuParseResult Parse() override;
    /// The same with a text instead of the file, whose name and folder stand in reports and for images all the same.
    MenuParseResult ParseText(std::u16string_view newText);

    /// The line that was read last, from 1 on; blank lines and comments count.
    std::uint32_t GetLineCount() const { return lineCount; }
    /// The last line that stood outside all blocks and has no place there; 0: there was none.
    std::uint32_t GetStrayLine() const { return strayLine; }

  private:
    /// What came of a line, or of a block.
    enum class Outcome { kGood, kWarned, kStray, kFatal };

    void StartOver();
    MenuParseResult ReadAll();
    Outcome ReadTopLevelLine();
    Outcome ReadFont();
    Outcome ReadTopLevelBlock();
    Outcome ReadBlock(VMenuToolbar& block, const VUnicodeString& name, int depth);
    Outcome ReadBlockLine(VMenuToolbar& block, int depth);
    Outcome ReadPopup(VMenuToolbar& parent, int depth);
    Outcome ReadItem(VMenuToolbar& block);
    Outcome ReadAccelerators();
    Outcome ReadStrings();
    template <class ReadEntry>
    Outcome ReadUntilEnd(ReadEntry readEntry);
    template <class T, class... Operands>
    Outcome ReadDefinition(MenuNameMap<T>& definitions, std::uint32_t twice, const Operands&... operands);

    bool ReadLine();
    bool ReadNextLine(std::u16string_view& next);
    Outcome ReportUnbalancedQuote();
    Outcome Warn(std::uint32_t code, std::initializer_list<std::u16string_view> inserts = {});
    Outcome Fail(std::uint32_t code, std::initializer_list<std::u16string_view> inserts = {});
    void FailToRead();

    VTextFile file;
    std::u16string_view* unread = nullptr;  ///< what ParseText has still to read; null: the file is read
    std::uint32_t lineCount = 0;
    std::uint32_t strayLine = 0;
    std::size_t characterCount = 0;
    MenuLine line;  ///< views, which last until the next line is read
    MenuImages images;
};

}  // namespace connectdialog
