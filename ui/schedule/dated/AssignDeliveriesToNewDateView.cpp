#include "schedule/dated/AssignDeliveriesToNewDateView.h"

#include "FormPlacement.h"
#include "dated/TFormAssignDeliveriesToNewDate.h"

#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kb::ui {

AssignDeliveriesToNewDateView::AssignDeliveriesToNewDateView(TFormAssignDeliveriesToNewDate& presenter,
                                                             SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter)
{
    setWindowTitle(TFormAssignDeliveriesToNewDate::caption());
    const auto dateEdit = [&presenter](const QDate& date) {
        auto* edit = new QDateEdit;
        edit->setCalendarPopup(true);
        edit->setMinimumDate(presenter.earliestDate());
        edit->setDate(date);
        return edit;
    };
    m_oldDate = dateEdit(presenter.oldDate());
    m_newDate = dateEdit(presenter.newDate());

    auto* note = new QLabel(QStringLiteral("Moves the saved deliveries and meal credits of every client from "
                                           "one date to another. Planned deliveries keep their dates."));
    note->setWordWrap(true);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Deliveries that fall on:"), m_oldDate);
    form->addRow(QStringLiteral("Shift them to:"), m_newDate);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_ok = box->button(QDialogButtonBox::Ok);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(note);
    layout->addLayout(form);
    layout->addStretch();
    layout->addWidget(box);

    connect(m_oldDate, &QDateEdit::dateChanged, this, [this] { update(); });
    connect(m_newDate, &QDateEdit::dateChanged, this, [this] { update(); });
    connect(box, &QDialogButtonBox::accepted, this, [this] {
        m_ok->setEnabled(false);
        if (m_presenter.ActionOK()) accept();
        update();
    });
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    update();
    keepPlacement(*this, settings, QStringLiteral("TFormAssignDeliveriesToNewDate"), QSize(460, 200));
}

void AssignDeliveriesToNewDateView::update()
{
    m_presenter.setOldDate(m_oldDate->date());
    m_presenter.setNewDate(m_newDate->date());
    m_ok->setEnabled(m_presenter.okEnabled());
}

} // namespace kb::ui
