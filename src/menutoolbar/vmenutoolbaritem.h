// One entry of a menu or toolbar.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "foundation/vunicodestring.h"
#include "imports/dialogkit/vicon.h"

namespace connectdialog {

/// A key with modifiers that stands for a command; all zero: there is none.
struct VMenuAccelerator {
    enum Flag : std::uint8_t { kVirtualKey = 1, kNoInvert = 2, kShift = 4, kControl = 8, kAlt = 16 };

    std::uint8_t flags = 0;
    std::uint16_t key = 0;  ///< a character, or a virtual key with kVirtualKey
    std::uint16_t command = 0;
    friend bool operator==(const VMenuAccelerator&, const VMenuAccelerator&) = default;
};
static_assert(sizeof(VMenuAccelerator) == 6);

/// An image that was loaded from a file, by the decoder of menuimage.h. Copies share it, and the last one frees it.
using VMenuBitmap = std::shared_ptr<const VIcon>;

/// The function numbers that the library itself relies on.
enum MenuItemType : std::uint32_t {
    kMenuTypePopup = 16,
    kMenuTypeSend = 17,
    kMenuTypeRun = 18,
    kMenuTypeOpenSession = 19,
    kMenuTypeOpenSessionTab = 20,
    kMenuTypeSeparator = 2048,
};

/// A value: a copy has all fields, and shares texts and bitmap.
class VMenuToolbarItem {
  public:
    VMenuToolbarItem() = default;
    /// With these texts from the start, which costs half as much as setting them.
    VMenuToolbarItem(VUnicodeString&& text, const VUnicodeString& functionName, std::u16string_view argument,
                     const VUnicodeString& toolTip, const VUnicodeString& prompt)
        : text(std::move(text)), functionName(functionName), argument(argument), toolTip(toolTip), prompt(prompt) {}
    VMenuToolbarItem(const VMenuToolbarItem&) = default;
    VMenuToolbarItem& operator=(const VMenuToolbarItem&) = default;
    virtual ~VMenuToolbarItem() = default;

    /// The label of a menu item, with a tab and its accelerator behind it; the name of a block.
    virtual void SetText(const VUnicodeString& newText) { text = newText; }
    /// The function's number, until VCustomMenuToolbar gives an item with an argument a command of its own.
    virtual void SetCommandId(std::uint32_t id) { commandId = id; }
    /// The function's number, or one of MenuItemType.
    virtual void SetType(std::uint32_t newType) { type = newType; }
    virtual void SetFunctionName(const VUnicodeString& name) { functionName = name; }
    virtual void SetArgument(const VUnicodeString& newArgument) { argument = newArgument; }
    virtual void SetToolTip(const VUnicodeString& tip) { toolTip = tip; }
    /// The text for the status line.
    virtual void SetPrompt(const VUnicodeString& newPrompt) { prompt = newPrompt; }
    /// Null: the image is not from a file.
    virtual void SetBitmap(const VMenuBitmap& newBitmap) { bitmap = newBitmap; }
    /// The place in the host's bitmap; -1: none.
    virtual void SetBitmapIndex(std::int32_t index) { bitmapIndex = index; }
    virtual void SetAccelerator(const VMenuAccelerator& newAccelerator) { accelerator = newAccelerator; }
    virtual void SetTakesArgument(bool takes) { takesArgument = takes; }

    virtual void GetText(VUnicodeString& out) const { out = text; }
    virtual std::uint32_t GetCommandId() const { return commandId; }
    virtual std::uint32_t GetType() const { return type; }
    virtual void GetFunctionName(VUnicodeString& out) const { out = functionName; }
    virtual void GetArgument(VUnicodeString& out) const { out = argument; }
    virtual void GetToolTip(VUnicodeString& out) const { out = toolTip; }
    virtual void GetPrompt(VUnicodeString& out) const { out = prompt; }
    virtual VMenuBitmap GetBitmap() const { return bitmap; }
    virtual std::int32_t GetBitmapIndex() const { return bitmapIndex; }
    virtual VMenuAccelerator GetAccelerator() const { return accelerator; }
    virtual bool GetTakesArgument() const { return takesArgument; }

  private:
    VUnicodeString text;
    std::uint32_t commandId = 0;
    std::uint32_t type = 0;
    VUnicodeString functionName;
    VUnicodeString argument;
    VUnicodeString toolTip;
    VUnicodeString prompt;
    VMenuBitmap bitmap;
    std::int32_t bitmapIndex = -1;
    VMenuAccelerator accelerator;
    bool takesArgument = false;
};

}  // namespace connectdialog
