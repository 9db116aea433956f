// Makes the items of menus and toolbars out of their lines.
#pragma once

#include <initializer_list>
#include <memory>
#include <string_view>

#include "menutoolbar/menuimage.h"
#include "menutoolbar/menuline.h"
#include "menutoolbar/vmenutoolbarrep.h"

namespace connectdialog {

/// Reads one line of the kind kMenuItem or kToolbarItem:
///
///   item    = what "," function [ "," argument [ "," string key [ "," accelerator key ] ] ]
///   what    = the label of a menu item; the image of a toolbar item: a name of the command table, or a file
///
/// Keys are those that the description has defined further up. A menu item may leave them empty; a toolbar item that
/// has them at all may not. A line with more operands has no accelerator key.
class MenuItemReader {
  public:
    /// Requires: all of them outlive the reader.
    MenuItemReader(VMenuToolbarRep& rep, MenuImages& images, const MenuLine& line, std::uint32_t lineNumber)
        : rep(rep), images(images), line(line), lineNumber(lineNumber) {}

    /// Null when the line is at fault, with a warning added to those of the description.
    MenuEntryPtr<VMenuToolbarItem> Read();

  private:
    // Each step is false when it has added a warning.
    bool FindFunction();
    bool FindImage();
    bool LoadImage(std::u16string_view name);
    bool CheckArgument();
    bool FindTexts();
    bool FindAccelerator();
    VUnicodeString MakeText() const;
    MenuEntryPtr<VMenuToolbarItem> MakeItem() const;
    bool Refuse(std::uint32_t code, std::initializer_list<std::u16string_view> inserts = {});
    bool IsTool() const { return line.kind == MenuLineKind::kToolbarItem; }
    /// Whether the line names a key there. In a menu item an empty one is none.
    bool HasKey(std::size_t operand) const;

    VMenuToolbarRep& rep;
    MenuImages& images;
    const MenuLine& line;
    std::uint32_t lineNumber;
    const VMenuResourceData::Command* command = nullptr;
    std::int32_t bitmapIndex = -1;
    VMenuBitmap bitmap;
    const MenuString* texts = nullptr;
    const AcceleratorRep* accelerator = nullptr;
};

}  // namespace connectdialog
