#include "deliveryreports/QtReportQuestions.h"

#include "deliveryreports/ClientItemsSortOrderDialog.h"
#include "deliveryreports/DeliveryDietCriteriaDialog.h"
#include "deliveryreports/ItemLimitationDialog.h"
#include "deliveryreports/LabelLimitDialog.h"

namespace kb::ui {

bool QtReportQuestions::askDietCriteria(reports::TFormDeliveryDietCriteria& form)
{
    DeliveryDietCriteriaDialog dialog(form, m_parent);
    return dialog.exec() == QDialog::Accepted;
}

bool QtReportQuestions::askClientItemsSortOrder(reports::TFormClientItemsSortOrder& form)
{
    ClientItemsSortOrderDialog dialog(form, m_parent);
    return dialog.exec() == QDialog::Accepted;
}

bool QtReportQuestions::askItemLimitation(reports::TFormItemLimitation& form)
{
    ItemLimitationDialog dialog(form, m_parent);
    return dialog.exec() == QDialog::Accepted;
}

bool QtReportQuestions::askLabelLimit(reports::TFormLabelLimit& form)
{
    LabelLimitDialog dialog(form, m_parent);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace kb::ui
