#include "clients/IndividualView.h"

#include "FormPlacement.h"
#include "clients/IndividualFieldsPanel.h"
#include "dataset/DataSet.h"
#include "individuals/TFormIndividual.h"
#include "records/RecordServices.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace kb::ui {

IndividualView::IndividualView(TFormIndividual& presenter, RecordServices& services, const DataSet& client,
                               SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_services(services),
      m_fields(new IndividualFieldsPanel(presenter.postalForm(), this))
{
    setWindowTitle(TFormIndividual::caption());
    m_fields->bind([this](const QString& column) { return m_presenter.value(column); },
                   [this](const QString& column, const QVariant& value) {
                       m_services.guarded([&] { m_presenter.setValue(column, value); });
                   },
                   [this] { m_services.guarded([&] { m_presenter.zipLeft(m_services.db()); }); });

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    QPushButton* import = buttons->addButton(QStringLiteral("&Import Client"), QDialogButtonBox::ActionRole);
    import->setToolTip(QStringLiteral("Copy the current client's name, address, phones and e-mail"));
    import->setEnabled(client.isActive() && !client.isEmpty());
    connect(import, &QPushButton::clicked, this, [this, &client] {
        m_services.guarded([&] { m_presenter.ImportClient(client); });
        m_fields->showValues();
    });
    connect(buttons, &QDialogButtonBox::accepted, this, &IndividualView::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &IndividualView::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_fields);
    layout->addStretch(1);
    layout->addWidget(buttons);
    keepPlacement(*this, settings, QStringLiteral("TFormIndividual"), QSize(520, 420));
}

void IndividualView::accept()
{
    if (m_services.guarded([&] { m_presenter.Ok(); })) QDialog::accept();
}

void IndividualView::reject()
{
    m_services.guarded([&] { m_presenter.Cancel(); });
    QDialog::reject();
}

} // namespace kb::ui
