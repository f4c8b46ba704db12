#include "ResetStartDateView.h"

#include "FormPlacement.h"
#include "screens/TFormResetStartDate.h"

#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

const QString FormName = QStringLiteral("TFormResetStartDate");

// A date picker that can also hold no date: its lowest date reads as empty.
QDateEdit* datePicker(const QDate& date, QWidget* parent)
{
    auto* edit = new QDateEdit(parent);
    edit->setCalendarPopup(true);
    edit->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
    edit->setMinimumDate(QDate(1899, 12, 30));
    edit->setSpecialValueText(QStringLiteral(" "));
    edit->setDate(date.isValid() ? date : edit->minimumDate());
    return edit;
}

QDate pickedDate(const QDateEdit* edit)
{
    return edit->date() == edit->minimumDate() ? QDate() : edit->date();
}

} // namespace

ResetStartDateView::ResetStartDateView(TFormResetStartDate& presenter, SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter),
      m_start(datePicker(presenter.startDate(), this)),
      m_recert(datePicker(presenter.recertificationDate(), this))
{
    setWindowTitle(TFormResetStartDate::caption());
    setMinimumWidth(320);
    auto* form = new QFormLayout;
    form->addRow(TFormResetStartDate::startDateLabel(), m_start);
    form->addRow(TFormResetStartDate::recertificationDateLabel(), m_recert);
    form->setRowVisible(m_recert, presenter.recertificationVisible());

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    keepPlacement(*this, settings, FormName, QSize());
}

void ResetStartDateView::done(int result)
{
    if (result == Accepted) {
        m_presenter.setStartDate(pickedDate(m_start));
        m_presenter.setRecertificationDate(pickedDate(m_recert));
    }
    QDialog::done(result);
}

} // namespace kb::ui
