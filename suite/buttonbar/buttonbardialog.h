// The dialog in which a user arranges a button bar.
#pragma once

#include "imports/dialogkit/vdialog.h"
#include "sessiondb/userbuttonbar.h"
#include "suite/dialogkit/lists/optionlist.h"

namespace connectdialog {

namespace ButtonBarIds {
inline constexpr int kDialog = 6300;
inline constexpr int kButtons = 6301;
inline constexpr int kAdd = 6302;
inline constexpr int kRemove = 6303;
inline constexpr int kUp = 6304;
inline constexpr int kDown = 6305;
inline constexpr int kFunction = 6306;
inline constexpr int kText = 6307;
inline constexpr int kFirstArgument = 6308;  ///< the two others follow
}  // namespace ButtonBarIds

/// Edits the bar in place and saves nothing. What stands in the fields belongs to the chosen button and is taken when
/// the user leaves it; what does not work as a button is refused in words then.
class ButtonBarDialog : public VDialog {
  public:
    /// Requires: `bar` outlives the dialog.
    ButtonBarDialog(UserButtonBar& bar, VWindow* parent);

  protected:
    void OnInitDialog() override;
    bool OnCommand(int command) override;
    void OnControlChanged(int id) override;
    void OnOK() override;

  private:
    /// Lists the buttons anew with the one at `place` chosen.
    void List(std::size_t place);
    void ShowFields();
    void ShowEnabled();
    UserButton ReadFields() const;
    /// False when the fields are no button, which was told then.
    bool Take();
    bool Choose(const void* data);
    void Add();
    void Remove();
    void Move(bool isUp);

    UserButtonBar& bar;
    OptionList list;
    std::size_t chosen = 0;  ///< the count of buttons: none is
    UserButton shown;        ///< as the fields were filled
};

}  // namespace connectdialog
