#include "outcomes/ReassignFundingView.h"

#include "FormPlacement.h"
#include "outcomes/ClientLookupField.h"
#include "funding/TFormReassignFunding.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kb::ui {

ReassignFundingView::ReassignFundingView(TFormReassignFunding& presenter, SettingsFile& settings,
                                         QWidget* parent)
    : QDialog(parent), m_presenter(presenter)
{
    setWindowTitle(TFormReassignFunding::caption());
    m_client = new ClientLookupField(presenter.clientLookup(), settings);
    m_service = new QComboBox;
    m_service->addItem(QString());
    m_service->addItems(presenter.services());
    const auto dateEdit = [] {
        auto* edit = new QDateEdit;
        edit->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
        edit->setCalendarPopup(true);
        edit->setMinimumDate(QDate(1899, 12, 30));
        edit->setDate(QDate(1899, 12, 30)); // reads as cleared
        return edit;
    };
    m_start = dateEdit();
    m_end = dateEdit();
    auto* choice =
        new QGroupBox(QStringLiteral("Select whether to remove funding source or assign to new source"));
    m_remove = new QRadioButton(QStringLiteral("Remove Funding"));
    m_reassign = new QRadioButton(QStringLiteral("Reassign Funding to"));
    m_funding = new QComboBox;
    m_funding->setEnabled(false);
    auto* choiceLayout = new QVBoxLayout(choice);
    choiceLayout->addWidget(m_remove);
    choiceLayout->addWidget(m_reassign);
    choiceLayout->addWidget(m_funding);

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Client:"), m_client);
    form->addRow(QStringLiteral("Service:"), m_service);
    form->addRow(QStringLiteral("Start of Date Range:"), m_start);
    form->addRow(QStringLiteral("End of Date Range:"), m_end);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_ok = box->button(QDialogButtonBox::Ok);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(choice);
    layout->addWidget(box);

    connect(m_client, &ClientLookupField::clientChanged, this, [this] { update(); });
    connect(m_service, &QComboBox::currentIndexChanged, this, [this] { update(); });
    connect(m_start, &QDateEdit::dateChanged, this, [this] { update(); });
    connect(m_end, &QDateEdit::dateChanged, this, [this] { update(); });
    connect(m_remove, &QRadioButton::toggled, this, [this] { update(); });
    connect(m_reassign, &QRadioButton::toggled, this, [this](bool on) {
        if (on && m_funding->count() == 0) {
            m_funding->addItem(QString());
            m_funding->addItems(m_presenter.fundingSources());
        }
        update();
    });
    connect(m_funding, &QComboBox::currentIndexChanged, this, [this] { update(); });
    connect(box, &QDialogButtonBox::accepted, this, [this] {
        m_ok->setEnabled(false);
        if (m_presenter.ActionOK()) accept();
        update();
    });
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    update();
    keepPlacement(*this, settings, QStringLiteral("TFormReassignFunding"), QSize(640, 380));
}

void ReassignFundingView::update()
{
    m_presenter.setClient(m_client->personId());
    m_presenter.setService(m_service->currentText());
    m_presenter.setStart(m_start->date());
    m_presenter.setEnd(m_end->date());
    if (m_remove->isChecked()) m_presenter.setRemove(true);
    if (m_reassign->isChecked()) m_presenter.setReassign(true);
    m_funding->setEnabled(m_reassign->isChecked());
    m_presenter.setFunding(m_funding->currentText());
    m_ok->setEnabled(m_presenter.okEnabled());
}

} // namespace kb::ui
