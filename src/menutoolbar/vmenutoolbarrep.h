// What a description of menus and toolbars says: menus and toolbars, accelerators, strings and a font, by name.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "foundation/varray.h"
#include "foundation/vreportmessageparams.h"
#include "menutoolbar/acceleratorrep.h"
#include "menutoolbar/menunamemap.h"
#include "menutoolbar/vmenuresourcedata.h"
#include "menutoolbar/vmenutoolbar.h"

namespace connectdialog {

enum class MenuParseResult : std::uint32_t {
    kClean = 0,
    kFailed = 1,    ///< what was read must not be used; the error tells why, or the line that stands outside all blocks
    kWarnings = 2,  ///< lines were left out; the warnings tell which
};

/// A string for the status line and the tool tip of items.
struct MenuString {
    /// The prompt, the two characters `\n`, and the tool tip; without those two the text is both.
    explicit MenuString(std::u16string_view text);

    VUnicodeString prompt;
    VUnicodeString toolTip;

  private:
    MenuString(std::u16string_view text, std::size_t mark);
};

/// Names the file and the commands for a reader, and owns what it has read. Belongs to one thread.
class VMenuToolbarRep {
  public:
    using Menus = std::vector<MenuEntryPtr<VMenuToolbar>>;

    VMenuToolbarRep() = default;
    VMenuToolbarRep(const VMenuToolbarRep&) = delete;
    VMenuToolbarRep& operator=(const VMenuToolbarRep&) = delete;
    virtual ~VMenuToolbarRep() = default;

    virtual bool IsEnabled() const { return isEnabled; }
    /// Ends all objects that were read, and forgets the command table. The name of the file stays.
    virtual void Reset();
    /// Reads the file afresh: what was read before is gone. Here it does nothing.
    virtual MenuParseResult Parse() { return MenuParseResult::kClean; }

    /// A mark of the host's; at first true.
    void SetEnabled(bool enabled) { isEnabled = enabled; }
    /// Requires: the table lives until Reset. Null: no function is known.
    void SetCommandTable(const VMenuResourceData* table) { commandTable = table; }
    const VMenuResourceData* GetCommandTable() const { return commandTable; }
    /// The folder of the file is where relative names of images are looked for.
    void SetFileName(const VUnicodeString& name);
    const VUnicodeString& GetFileName() const { return fileName; }
    const VUnicodeString& GetFolder() const { return folder; }

    /// The blocks of the top level, in the order of the description.
    const Menus& GetMenus() const { return menus; }
    /// Null when there is none of that name.
    VMenuToolbar* FindMenu(std::u16string_view name) const;
    const AcceleratorRep* FindAccelerator(std::u16string_view key) const;
    const MenuString* FindString(std::u16string_view key) const;
    /// A face name; empty when there is none.
    const VUnicodeString& GetFont() const { return font; }

    /// Where entries are made, which go with Reset and the next Parse.
    std::pmr::memory_resource& GetMemory() { return memory; }

    /// The error, of code 0 when there is none.
    VReportMessageParams& GetError() { return error; }
    /// In the order of the lines.
    VArray<VReportMessageParams>& GetWarnings() { return warnings; }

  protected:
    /// Takes over a block. Requires: its name is new.
    void AddMenu(const VUnicodeString& name, MenuEntryPtr<VMenuToolbar> menu);
    bool IsEmpty() const { return menus.empty() && accelerators.empty() && strings.empty() && font.IsEmpty(); }
    void DropContents();

    const VMenuResourceData* commandTable = nullptr;
    VUnicodeString fileName;
    VUnicodeString folder;
    bool isEnabled = true;
    std::pmr::monotonic_buffer_resource memory;  ///< of the entries and the maps
    Menus menus;
    MenuNameMap<VMenuToolbar*> menusByName{&memory};
    MenuNameMap<AcceleratorRep> accelerators{&memory};
    MenuNameMap<MenuString> strings{&memory};
    VReportMessageParams error;
    VArray<VReportMessageParams> warnings;
    VUnicodeString font;
};

}  // namespace connectdialog
