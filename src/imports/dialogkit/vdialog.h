// A dialog's behaviour. Its looks are a template; see src/resources/dialogtemplate.h.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "foundation/vunicodestring.h"
#include "imports/dialogkit/dataexchange.h"
#include "imports/dialogkit/idialogwindow.h"
#include "imports/dialogkit/vwindow.h"
#include "resources/accelerators.h"
#include "resources/dialogtemplate.h"

namespace connectdialog {

/// Results of a dialog; a dialog may have more.
inline constexpr std::int64_t kDialogAccepted = 1;
inline constexpr std::int64_t kDialogCancelled = 2;

/// Derive from it, override what the dialog does of its own, and call DoModal. The window exists from just before
/// OnInitDialog until OnDestroy came back; outside of that, operations on controls do nothing and answer nothing.
class VDialog : public VWindow, private IDialogEvents {
  public:
    /// A template of the library's resources; where there is none of that id the dialog cannot be shown. `parent` may
    /// be null.
    VDialog(int templateId, VWindow* parent) : dialogTemplate(FindDialogTemplate(templateId)), parent(parent) {}
    /// A template of the caller's, which outlives the dialog.
    VDialog(const DialogTemplate& dialogTemplate, VWindow* parent) : dialogTemplate(&dialogTemplate), parent(parent) {}
    VDialog(const VDialog&) = delete;
    VDialog& operator=(const VDialog&) = delete;
    ~VDialog() override;

    /// Shows the dialog and waits until it ends. Gives what EndDialog was given; kDialogCancelled when there is no back
    /// end to show it, or when that closed the window of its own accord.
    std::int64_t DoModal();
    /// Shows the dialog beside what the caller does. On failure: false.
    bool Create();
    /// Ends a dialog that Create showed; does nothing when it does not show.
    void Destroy();
    /// The first call counts.
    void EndDialog(std::int64_t result);
    bool HasEnded() const { return hasEnded; }
    std::int64_t GetResult() const { return result; }

    /// Moves data between members and controls: from the controls when `save` is set. False when one was refused.
    bool UpdateData(bool save);

    /// The back end's; null while the dialog does not show.
    IDialogWindow* GetWindow() const { return window.get(); }

    VUnicodeString GetControlText(int id) const;
    void SetControlText(int id, const VUnicodeString& text);
    void SetControlChoices(int id, std::span<const VUnicodeString> choices);
    bool IsControlChecked(int id) const;
    void SetControlChecked(int id, bool isChecked);
    void EnableControl(int id, bool isEnabled);
    void ShowControl(int id, bool isShown);
    void FocusControl(int id);
    void SetTitle(const VUnicodeString& title);

  protected:
    /// The controls are there, with the template's texts. The base writes the members to them.
    virtual void OnInitDialog();
    /// Lists the members, one DDX_… each; a page in it by ExchangePage.
    virtual void DoDataExchange(VDataExchange& exchange);
    /// A button, a menu entry, a key: whatever raised the command. True when it was known. The base knows kIdOk and
    /// kIdCancel.
    virtual bool OnCommand(int command);
    /// The user changed the text of an edit control, or chose in a combo box.
    virtual void OnControlChanged(int id);
    /// Takes the data over and ends with kDialogAccepted, unless a datum was refused.
    virtual void OnOK();
    virtual void OnCancel();
    /// A key before any control sees it. True when that was all. The base looks it up among the accelerators.
    virtual bool PreTranslateKey(std::uint16_t key, KeyModifiers modifiers);
    void OnTimer(int timer) override;
    void OnSize(std::int32_t width, std::int32_t height) override;
    /// The window goes; its controls are still there.
    virtual void OnDestroy();

    /// Makes the dialog a page of `owner`, hidden; see IDialogWindow::CreatePage. `owner` becomes its parent and shows
    /// longer than it. False when it shows already or cannot be made, also when its OnInitDialog throws.
    bool CreatePage(VDialog& owner, const VRectangle& place, int behindId);
    void ShowPage(bool isShown);
    /// Moves the focus to the first control that takes it.
    void FocusFirstControl();

    /// Requires: the table outlives the dialog.
    void SetAccelerators(AcceleratorTable table) { accelerators = table; }
    VWindow* GetParent() const { return parent; }

  private:
    bool Open();
    bool Attach(std::unique_ptr<IDialogWindow> newWindow);
    void CloseWindow();
    void OnCommandEvent(int id) final;
    void OnTextChanged(int id) final;
    bool OnKeyEvent(std::uint16_t key, KeyModifiers modifiers) final;
    void OnWindowGone() final;

    const DialogTemplate* dialogTemplate;
    VWindow* parent;
    std::unique_ptr<IDialogWindow> window;
    AcceleratorTable accelerators;
    std::int64_t result = kDialogCancelled;
    bool hasEnded = false;
    bool isDestroyed = true;
};

/// Who wants to know that the host was edited, or whatever else decides whether a page's settings are complete.
class IHostnameChanged {
  public:
    virtual void OnHostnameChanged() = 0;

  protected:
    ~IHostnameChanged() = default;
};

/// A dialog that a plug-in of the suite may bring: of its own, or as a page of another dialog.
class VPluginDialog : public VDialog {
  public:
    using VDialog::CreatePage;
    using VDialog::FocusFirstControl;
    using VDialog::ShowPage;
    using VDialog::VDialog;

    /// Requires: `newSink` outlives the dialog, or is replaced before it goes; it may be null.
    void SetHostnameChangedSink(IHostnameChanged* newSink) { sink = newSink; }

  protected:
    void TellHostnameChanged() const {
        if (sink != nullptr) sink->OnHostnameChanged();
    }

  private:
    IHostnameChanged* sink = nullptr;
};

/// A page's part of its owner's data; a page that refuses keeps the focus. `page` may be null.
void ExchangePage(VDataExchange& exchange, VPluginDialog* page);

}  // namespace connectdialog
