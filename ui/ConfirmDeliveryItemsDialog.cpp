#include "ConfirmDeliveryItemsDialog.h"

#include "ConfirmDeliveryItemsView.h"

namespace kb::ui {

bool ConfirmDeliveryItemsDialog::confirm(TFormConfirmDeliveryItems& form)
{
    ConfirmDeliveryItemsView view(form, m_parent);
    return view.exec() == QDialog::Accepted;
}

} // namespace kb::ui
