// The view of a tree control, and what the user does in it.
#pragma once

#include <cstdint>

#include "foundation/vunicodestring.h"
#include "imports/dialogkit/dragdata.h"
#include "imports/dialogkit/idialogwindow.h"
#include "imports/dialogkit/vtreeitems.h"

namespace connectdialog {

enum class MouseButton : std::uint8_t { kLeft, kRight };

enum class TreePart : std::uint8_t {
    kNothing,
    kExpander,
    kIcon,
    kLabel,
    kBeside  ///< in the row of the item, right or left of what is drawn
};

struct TreeHit {
    TreeItem item = TreeItem::kNone;
    TreePart part = TreePart::kNothing;
};

/// Draws VTreeItems, whose observer it is, and keeps the scroll position. It changes no state of an item: what a
/// gesture means is decided by whoever gets its event. Points and rectangles are pixels of the control.
class ITreeView {
  public:
    virtual ~ITreeView() = default;

    virtual TreeHit HitTest(VPoint point) const = 0;
    /// The item's row, or what its label covers of it. False when it is scrolled or folded away; `rectangle` stays
    /// then.
    virtual bool GetItemRectangle(TreeItem item, bool labelOnly, VRectangle& rectangle) const = 0;
    virtual VRectangle GetClientRectangle() const = 0;
    /// Scrolls as little as needed. The item's ancestors are expanded already.
    virtual void EnsureVisible(TreeItem item) = 0;
    /// Down by so many rows; negative: up.
    virtual void ScrollRows(int rows) = 0;
    virtual void Redraw() = 0;

    /// Takes the focus and lets the user edit the label, after ITreeEvents::OnBeginLabelEdit allowed it. An edit that
    /// runs is cancelled before. Ends with ITreeEvents::OnEndLabelEdit, also when the item is removed or folded away; a
    /// click elsewhere in the window, on whatever control, ends it with its text, and is lost when that began the edit
    /// again: a command never follows a label that was refused. Keys go to the edit box alone, Return and Escape end
    /// it.
    virtual void BeginLabelEdit(TreeItem item) = 0;
    /// Ends an edit that runs, with its text or without.
    virtual void EndLabelEdit(bool keepText) = 0;

    /// Runs a drag of the data, with a picture of the item, until it is dropped or given up, here or elsewhere. Gives
    /// what the target did; kNone when nothing.
    virtual DropEffect RunDrag(TreeItem item, const VDragData& data) = 0;
    /// Shows the picture of the drag that is over this control. On failure: false.
    virtual bool EnterDragImage(VPoint point) = 0;
    virtual void MoveDragImage(VPoint point) = 0;
    virtual void LeaveDragImage() = 0;
};

/// What the user does. What code does raises none of these.
class ITreeEvents {
  public:
    virtual ~ITreeEvents() = default;

    virtual void OnMouseDown(MouseButton button, VPoint point, KeyModifiers modifiers) = 0;
    virtual void OnDoubleClick(VPoint point) = 0;
    virtual void OnKeyDown(std::uint16_t key, KeyModifiers modifiers) = 0;
    /// Text came from the keyboard, by whatever way; after OnKeyDown of its key.
    virtual void OnText(const VUnicodeString& text) = 0;
    /// The pointer moved with the left button held since it went down on this item.
    virtual void OnBeginDrag(TreeItem item, VPoint point) = 0;

    /// False forbids the edit.
    virtual bool OnBeginLabelEdit(TreeItem item) = 0;
    /// `text` is null when the edit was cancelled. The label itself did not change.
    virtual void OnEndLabelEdit(TreeItem item, const VUnicodeString* text) = 0;
    /// The text of the tip for an item under a resting pointer. False: no tip.
    virtual bool OnInfoTip(TreeItem item, VUnicodeString& text) = 0;

    // The control as the target of a drag, whoever started it.

    virtual DropEffect OnDragEnter(const VDragData& data, VPoint point, KeyModifiers modifiers) = 0;
    virtual DropEffect OnDragOver(const VDragData& data, VPoint point, KeyModifiers modifiers) = 0;
    virtual void OnDragLeave() = 0;
    /// `effect` is what OnDragOver gave last. True when the data was taken.
    virtual bool OnDrop(const VDragData& data, VPoint point, DropEffect effect) = 0;
};

}  // namespace connectdialog
