#include "GridExportDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

namespace kb::ui {

GridExportDialog::GridExportDialog(QWidget* parent)
    : QDialog(parent),
      m_file(new QLineEdit(this)),
      m_type(new QComboBox(this)),
      m_selected(new QCheckBox(QStringLiteral("Selected Records Only"), this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(QStringLiteral("Grid Export Options"));
    setObjectName(QStringLiteral("TFormGridExportOptions"));
    m_type->addItems(GridExport::typeTexts());
    auto* browse = new QPushButton(QStringLiteral("Browse..."), this);
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(m_file, 1);
    fileRow->addWidget(browse);
    auto* form = new QFormLayout(this);
    form->addRow(QStringLiteral("Export Filename:"), fileRow);
    form->addRow(QStringLiteral("Export Type:"), m_type);
    form->addRow(QString(), m_selected);
    form->addRow(m_buttons);
    resize(520, sizeHint().height());
    const auto enable = [this] {
        m_buttons->button(QDialogButtonBox::Ok)->setEnabled(!m_file->text().trimmed().isEmpty());
    };
    connect(m_file, &QLineEdit::textChanged, this, enable);
    connect(browse, &QPushButton::clicked, this, &GridExportDialog::browse);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    enable();
}

void GridExportDialog::browse()
{
    const QString ext = GridExport::extension(options().type);
    const QString file = QFileDialog::getSaveFileName(this, windowTitle(), m_file->text(),
                                                      QStringLiteral("*.%1").arg(ext));
    if (!file.isEmpty())
        m_file->setText(file);
}

GridExportOptions GridExportDialog::options() const
{
    return {m_file->text().trimmed(), GridExportType(m_type->currentIndex()), m_selected->isChecked()};
}

} // namespace kb::ui
