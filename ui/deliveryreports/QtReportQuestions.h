#pragma once

#include "delivery/questions/ReportQuestions.h"

#include <QPointer>

class QWidget;

namespace kb::ui {

// The questions of the delivery reports as the desktop asks them: each in
// its dialog over the report screen.
class QtReportQuestions final : public reports::ReportQuestions
{
public:
    explicit QtReportQuestions(QWidget* parent) : m_parent(parent) {}
    void setParent(QWidget* parent) { m_parent = parent; }

    bool askDietCriteria(reports::TFormDeliveryDietCriteria& form) override;
    bool askClientItemsSortOrder(reports::TFormClientItemsSortOrder& form) override;
    bool askItemLimitation(reports::TFormItemLimitation& form) override;
    bool askLabelLimit(reports::TFormLabelLimit& form) override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace kb::ui
