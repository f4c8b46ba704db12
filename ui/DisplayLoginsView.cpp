#include "DisplayLoginsView.h"

#include "FormPlacement.h"
#include "UserInterface.h"
#include "session/TFormDisplayLogins.h"
#include "store/DbError.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

DisplayLoginsView::DisplayLoginsView(TFormDisplayLogins& presenter, UserInterface& ui, SettingsFile& settings,
                                     QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_ui(ui), m_settings(settings), m_days(new QSpinBox(this)),
      m_grid(new QTableWidget(this))
{
    setWindowTitle(TFormDisplayLogins::caption());
    setObjectName(QStringLiteral("TFormDisplayLogins"));
    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(QStringLiteral("Number of past days:"), this));
    m_days->setRange(1, 3650);
    m_days->setValue(presenter.pastDays());
    top->addWidget(m_days);
    auto* refreshButton = new QPushButton(QStringLiteral("&Refresh"), this);
    top->addWidget(refreshButton);
    top->addStretch();
    layout->addLayout(top);
    m_grid->setColumnCount(3);
    m_grid->setHorizontalHeaderLabels(
        {QStringLiteral("User"), QStringLiteral("Action"), QStringLiteral("Date/Time")});
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->verticalHeader()->setVisible(false);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 8);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    layout->addWidget(m_grid);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(refreshButton, &QPushButton::clicked, this, &DisplayLoginsView::refresh);
    resize(560, 420);
    restoreFormPosition(*this, settings, objectName());
    refresh();
}

void DisplayLoginsView::refresh()
{
    m_presenter.setPastDays(m_days->value());
    try {
        m_presenter.refresh();
    } catch (const DbError& error) {
        m_ui.error(error.message());
        return;
    }
    const ResultSet& rows = m_presenter.rows();
    m_grid->setRowCount(int(rows.rowCount()));
    for (int r = 0; r < int(rows.rowCount()); ++r) {
        m_grid->setItem(r, 0, new QTableWidgetItem(rows.value(r, 2).toString()));
        m_grid->setItem(r, 1, new QTableWidgetItem(rows.value(r, 3).toString()));
        m_grid->setItem(
            r, 2,
            new QTableWidgetItem(QLocale().toString(rows.value(r, 1).toDateTime(), QLocale::ShortFormat)));
    }
    m_grid->resizeColumnsToContents();
}

void DisplayLoginsView::done(int result)
{
    saveFormPosition(*this, m_settings, objectName());
    QDialog::done(result);
}

} // namespace kb::ui
