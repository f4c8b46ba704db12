#include "outcomes/DeleteDeliveryCreditsView.h"

#include "FormPlacement.h"
#include "outcomes/ClientLookupField.h"
#include "records/TFormDelDeliv.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace kb::ui {

DeleteDeliveryCreditsView::DeleteDeliveryCreditsView(TFormDelDeliv& presenter, SettingsFile& settings,
                                                     QWidget* parent)
    : QDialog(parent), m_presenter(presenter)
{
    setWindowTitle(TFormDelDeliv::caption());
    m_date = new QDateEdit(QDate(1899, 12, 30));
    m_date->setMinimumDate(QDate(1899, 12, 30));
    m_date->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
    m_date->setCalendarPopup(true);
    m_service = new QComboBox;
    m_service->addItem(QString(), -1);
    for (const auto& s : presenter.services())
        m_service->addItem(s.text, s.id);
    m_client = new ClientLookupField(presenter.clientLookup(), settings);
    m_kinds = new QComboBox;
    m_kinds->addItem(QString());
    m_kinds->addItems(TFormDelDeliv::kindChoices());

    m_pages = new QTabWidget;
    auto* byService = new QWidget;
    auto* serviceForm = new QFormLayout(byService);
    serviceForm->addRow(QStringLiteral("Service:"), m_service);
    auto* byClient = new QWidget;
    auto* clientForm = new QFormLayout(byClient);
    clientForm->addRow(QStringLiteral("Client:"), m_client);
    m_pages->addTab(byService, QStringLiteral("By &Service"));
    m_pages->addTab(byClient, QStringLiteral("By &Client"));

    auto* common = new QFormLayout;
    common->addRow(QStringLiteral("Date:"), m_date);
    common->addRow(QStringLiteral("Walk-Ins:"), m_kinds);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_ok = box->button(QDialogButtonBox::Ok);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    layout->addLayout(common);
    layout->addWidget(box);

    connect(m_pages, &QTabWidget::currentChanged, this, [this] { update(); });
    connect(m_date, &QDateEdit::dateChanged, this, [this] { update(); });
    connect(m_service, &QComboBox::currentIndexChanged, this, [this] { update(); });
    connect(m_client, &ClientLookupField::clientChanged, this, [this] { update(); });
    connect(m_kinds, &QComboBox::currentIndexChanged, this, [this] { update(); });
    connect(box, &QDialogButtonBox::accepted, this, [this] {
        if (m_presenter.ActionOK()) accept();
    });
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    update();
    keepPlacement(*this, settings, QStringLiteral("TFormDelDeliv"), QSize(560, 300));
}

void DeleteDeliveryCreditsView::update()
{
    m_presenter.setPage(m_pages->currentIndex() == 1 ? TFormDelDeliv::Page::ByClient
                                                     : TFormDelDeliv::Page::ByService);
    m_presenter.setDate(m_date->date());
    m_presenter.setService(m_service->currentData().toLongLong());
    m_presenter.setClient(m_client->personId());
    m_presenter.setKinds(m_kinds->currentIndex() - 1);
    m_ok->setEnabled(m_presenter.okEnabled());
}

} // namespace kb::ui
