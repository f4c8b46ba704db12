#include "MappingOptionsDialog.h"

#include "PushpinLabels.h"
#include "TFormMapPointOptionsOrderRoutes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kb::ui {

MappingOptionsDialog::MappingOptionsDialog(TFormMapPointOptionsOrderRoutes& presenter, QWidget* parent)
    : QDialog(parent),
      m_presenter(presenter),
      m_action(new QComboBox(this)),
      m_start(new QCheckBox(QStringLiteral("Include Starting"), this)),
      m_end(new QCheckBox(QStringLiteral("Include Ending"), this)),
      m_location(new QComboBox(this)),
      m_name(new QLineEdit(this)),
      m_address(new QLineEdit(this)),
      m_city(new QLineEdit(this)),
      m_state(new QLineEdit(this)),
      m_zip(new QLineEdit(this)),
      m_optimize(new QCheckBox(QStringLiteral("Optimize and Retrieve Stops"), this)),
      m_file(new QLineEdit(this)),
      m_label(new QComboBox(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(TFormMapPointOptionsOrderRoutes::caption());
    setObjectName(TFormMapPointOptionsOrderRoutes::formName());
    for (MappingAction action : m_presenter.offeredActions())
        m_action->addItem(TFormMapPointOptionsOrderRoutes::actionText(action), int(action));
    m_location->addItems(m_presenter.locationEntries());
    m_label->addItems(PushpinLabels::captions());

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Mapping Action"), m_action);
    auto* ends = new QGroupBox(QStringLiteral("Starting and Ending Location"), this);
    auto* endsForm = new QFormLayout(ends);
    endsForm->addRow(m_start);
    endsForm->addRow(m_end);
    endsForm->addRow(QString(), m_location);
    const QStringList labels = m_presenter.addressLabels();
    endsForm->addRow(QStringLiteral("Name:"), m_name);
    endsForm->addRow(QStringLiteral("Address:"), m_address);
    endsForm->addRow(labels.value(0), m_city);
    endsForm->addRow(labels.value(1), m_state);
    endsForm->addRow(labels.value(2), m_zip);
    auto* optimize = new QGroupBox(QStringLiteral("Optimize Route"), this);
    auto* optimizeLayout = new QVBoxLayout(optimize);
    optimizeLayout->addWidget(m_optimize);
    auto* file = new QGroupBox(QStringLiteral("Export File Name"), this);
    auto* fileLayout = new QVBoxLayout(file);
    fileLayout->addWidget(m_file);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(ends);
    layout->addWidget(optimize);
    layout->addWidget(file);
    auto* labelForm = new QFormLayout;
    labelForm->addRow(QStringLiteral("Pushpin Labels"), m_label);
    layout->addLayout(labelForm);
    layout->addWidget(m_buttons);

    showState();
    const auto changed = [this] {
        if (m_showing)
            return;
        readFields();
        showState();
    };
    connect(m_action, &QComboBox::currentIndexChanged, this, changed);
    connect(m_start, &QCheckBox::toggled, this, changed);
    connect(m_end, &QCheckBox::toggled, this, changed);
    connect(m_optimize, &QCheckBox::toggled, this, changed);
    connect(m_file, &QLineEdit::textChanged, this, changed);
    connect(m_label, &QComboBox::currentIndexChanged, this, changed);
    connect(m_location, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (m_showing)
            return;
        m_presenter.setLocationIndex(index);
        showState();
    });
    connect(m_buttons, &QDialogButtonBox::accepted, this, &MappingOptionsDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void MappingOptionsDialog::readFields()
{
    MapPointOptions& o = m_presenter.options();
    m_presenter.setAction(MappingAction(m_action->currentData().toInt()));
    o.includeStarting = m_start->isChecked();
    o.includeEnding = m_end->isChecked();
    o.location = {m_name->text(), m_address->text(), m_city->text(), m_state->text(), m_zip->text()};
    o.exportFile = m_file->text();
    o.optimizeAndRetrieve = m_optimize->isChecked();
    m_presenter.setLabelOption(m_label->currentIndex());
}

void MappingOptionsDialog::showState()
{
    m_showing = true;
    const MapPointOptions& o = m_presenter.options();
    m_action->setCurrentIndex(m_action->findData(int(o.action)));
    m_start->setChecked(o.includeStarting);
    m_end->setChecked(o.includeEnding);
    m_location->setCurrentIndex(m_presenter.locationIndex());
    m_name->setText(o.location.name);
    m_address->setText(o.location.address);
    m_city->setText(o.location.city);
    m_state->setText(o.location.state);
    m_zip->setText(o.location.zip);
    for (QWidget* w : {static_cast<QWidget*>(m_location), static_cast<QWidget*>(m_name),
                       static_cast<QWidget*>(m_address), static_cast<QWidget*>(m_city),
                       static_cast<QWidget*>(m_state), static_cast<QWidget*>(m_zip)})
        w->setEnabled(m_presenter.locationFieldsEnabled());
    m_optimize->setChecked(o.optimizeAndRetrieve);
    m_optimize->setEnabled(m_presenter.optimizeEnabled());
    m_file->setText(o.exportFile);
    m_file->setEnabled(o.action == MappingAction::Export);
    m_label->setCurrentIndex(o.labelOption);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(m_presenter.okEnabled());
    m_showing = false;
}

void MappingOptionsDialog::accept()
{
    readFields();
    if (m_presenter.accept())
        QDialog::accept();
}

} // namespace kb::ui
