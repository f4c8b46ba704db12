#include "clients/RelationshipView.h"

#include "FormPlacement.h"
#include "clients/IndividualFieldsPanel.h"
#include "individuals/TFormRelationship.h"
#include "records/RecordServices.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace kb::ui {

RelationshipView::RelationshipView(TFormRelationship& presenter, RecordServices& services,
                                   SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_services(services), m_relationship(new QComboBox(this)),
      m_individual(new QComboBox(this)), m_fields(new IndividualFieldsPanel(presenter.postalForm(), this)),
      m_note(new QPlainTextEdit(this))
{
    setWindowTitle(TFormRelationship::caption());
    m_showing = true;
    const auto write = [this](const QString& column, const QVariant& value) {
        if (!m_showing) m_services.guarded([&] { m_presenter.setValue(column, value); });
    };

    m_relationship->setObjectName(QStringLiteral("Relationship"));
    m_relationship->setEditable(true);
    m_relationship->addItems(presenter.relationshipChoices());
    m_relationship->setCurrentText(presenter.value(QStringLiteral("Relationship")).toString().trimmed());
    connect(m_relationship, &QComboBox::currentTextChanged, this,
            [write](const QString& text) { write(QStringLiteral("Relationship"), text.trimmed()); });

    m_individual->setObjectName(QStringLiteral("Indiv_ID"));
    m_individual->addItem(QString(), 0);
    for (const IndividualChoice& choice : presenter.individualChoices())
        m_individual->addItem(choice.text, choice.indivId);
    m_individual->setCurrentIndex(std::max(0, m_individual->findData(presenter.indivId())));
    m_individual->setMinimumContentsLength(30);
    connect(m_individual, &QComboBox::currentIndexChanged, this, [this] {
        if (m_showing) return;
        const qint64 id = m_individual->currentData().toLongLong();
        m_services.guarded([&] { m_presenter.setIndividual(id); });
        showIndividual();
    });

    auto* flags = new QVBoxLayout;
    const auto flag = [&](const char* column, const QString& text) {
        auto* box = new QCheckBox(text, this);
        box->setObjectName(QString::fromLatin1(column));
        box->setChecked(presenter.value(QString::fromLatin1(column)).toBool());
        connect(box, &QCheckBox::toggled, this,
                [write, column](bool on) { write(QString::fromLatin1(column), on); });
        flags->addWidget(box);
    };
    flag("Referrer", QStringLiteral("Referrer"));
    flag("HIV_Aware", presenter.awareLabel());
    flag("Emergency_Contact", QStringLiteral("Emergency Contact"));

    m_note->setPlainText(presenter.value(QStringLiteral("Note")).toString());
    m_note->setTabChangesFocus(true);
    connect(m_note, &QPlainTextEdit::textChanged, this,
            [this, write] { write(QStringLiteral("Note"), m_note->toPlainText()); });

    auto* top = new QFormLayout;
    top->addRow(QStringLiteral("Relationship:"), m_relationship);
    top->addRow(TFormRelationship::individualLabel(), m_individual);

    auto* individualBox = new QGroupBox(QStringLiteral("Related Individual"), this);
    auto* individualLayout = new QVBoxLayout(individualBox);
    individualLayout->addWidget(m_fields);
    m_fields->bind([this](const QString& column) { return m_presenter.individualValue(column); },
                   [this](const QString& column, const QVariant& value) {
                       m_services.guarded([&] { m_presenter.setIndividualValue(column, value); });
                   },
                   [this] { m_services.guarded([&] { m_presenter.individualZipLeft(); }); });

    auto* side = new QVBoxLayout;
    side->addLayout(flags);
    side->addWidget(new QLabel(QStringLiteral("Note:"), this));
    side->addWidget(m_note, 1);

    auto* middle = new QHBoxLayout;
    middle->addWidget(individualBox, 3);
    middle->addLayout(side, 2);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &RelationshipView::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &RelationshipView::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(middle, 1);
    layout->addWidget(buttons);
    m_showing = false;
    showIndividual();
    keepPlacement(*this, settings, QStringLiteral("TFormRelationship"), QSize(860, 460));
}

void RelationshipView::showIndividual()
{
    m_fields->showValues();
    m_fields->setEditable(m_presenter.hasIndividual());
}

void RelationshipView::accept()
{
    bool saved = false;
    m_services.guarded([&] { saved = m_presenter.Ok(); });
    if (saved) QDialog::accept();
}

void RelationshipView::reject()
{
    m_services.guarded([&] { m_presenter.Cancel(); });
    QDialog::reject();
}

} // namespace kb::ui
