#pragma once

#include "dated/TFormEditEpisodicDeliveries.h"

#include <QDialog>

class QCheckBox;
class QDateEdit;
class QRadioButton;

namespace kb::ui {

// "Delivery Deletion Options": the current delivery or a range of dates,
// and whether fulfilled deliveries go too.
class DeliveryDeletionOptionsDialog : public QDialog
{
    Q_OBJECT

public:
    DeliveryDeletionOptionsDialog(const QDate& today, QWidget* parent = nullptr);
    const DeliveryDeletionOptions& options() const { return m_options; }

private:
    void show(const DeliveryDeletionOptions& options);

    DeliveryDeletionOptions m_options;
    QRadioButton* m_single;
    QRadioButton* m_range;
    QDateEdit* m_beginning;
    QDateEdit* m_ending;
    QCheckBox* m_fulfilled;
};

} // namespace kb::ui
