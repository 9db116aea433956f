#include "imports/dialogkit/dataexchange.h"

#include "imports/dialogkit/idialogwindow.h"

namespace connectdialog {

void VDataExchange::Refuse(int id) {
    refused = true;
    window.SetFocus(id);
}

void DDX_Text(VDataExchange& exchange, int id, VUnicodeString& text) {
    if (exchange.IsSaving())
        text = exchange.GetWindow().GetText(id);
    else if (!exchange.IsRefused())
        exchange.GetWindow().SetText(id, text);
}

void DDX_Check(VDataExchange& exchange, int id, bool& isChecked) {
    if (exchange.IsSaving())
        isChecked = exchange.GetWindow().IsChecked(id);
    else if (!exchange.IsRefused())
        exchange.GetWindow().SetChecked(id, isChecked);
}

}  // namespace connectdialog
