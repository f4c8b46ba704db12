#include "specialmeals/BrowseSpecialMealDatesView.h"

#include "FormPlacement.h"
#include "specialmeals/TFormBrowseSpecialMealDates.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

const QString formName = QStringLiteral("TFormBrowseSpecialMealDates");

} // namespace

BrowseSpecialMealDatesView::BrowseSpecialMealDatesView(TFormBrowseSpecialMealDates& presenter,
                                                       SettingsFile* settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_settings(settings), m_table(new QTableWidget(this)),
      m_add(new QPushButton(QStringLiteral("Add Date"), this)),
      m_edit(new QPushButton(QStringLiteral("Edit Date"), this))
{
    setWindowTitle(TFormBrowseSpecialMealDates::caption());
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->verticalHeader()->hide();
    auto* marks = new QLabel(TFormBrowseSpecialMealDates::marksHeading(), this);
    marks->setAlignment(Qt::AlignRight);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* commands = new QHBoxLayout;
    commands->addWidget(m_add);
    commands->addWidget(m_edit);
    commands->addStretch();
    commands->addWidget(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(marks);
    layout->addWidget(m_table, 1);
    layout->addLayout(commands);
    resize(520, 420);
    if (m_settings) restoreFormPosition(*this, *m_settings, formName);

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_add, &QPushButton::clicked, &m_presenter, &TFormBrowseSpecialMealDates::ActionAddDate);
    connect(m_edit, &QPushButton::clicked, &m_presenter, &TFormBrowseSpecialMealDates::ActionEditDate);
    connect(m_table, &QTableWidget::cellDoubleClicked, this, [this](int row, int) {
        m_presenter.setCurrentRow(row);
        m_presenter.ActionEditDate();
    });
    connect(m_table, &QTableWidget::currentCellChanged, this,
            [this](int row, int, int, int) { m_presenter.setCurrentRow(row); });
    connect(&m_presenter, &TFormBrowseSpecialMealDates::changed, this,
            &BrowseSpecialMealDatesView::showState);
    showState();
}

BrowseSpecialMealDatesView::~BrowseSpecialMealDatesView()
{
    if (m_settings) saveFormPosition(*this, *m_settings, formName);
}

void BrowseSpecialMealDatesView::showState()
{
    const QSignalBlocker block(m_table);
    const int meals = m_presenter.mealColumns();
    m_table->clear();
    m_table->setColumnCount(1 + meals);
    QStringList titles{QStringLiteral("Date")};
    for (int meal = 1; meal <= meals; ++meal)
        titles << m_presenter.mealTitle(meal);
    m_table->setHorizontalHeaderLabels(titles);
    const auto& rows = m_presenter.rows();
    m_table->setRowCount(int(rows.size()));
    for (int r = 0; r < rows.size(); ++r) {
        m_table->setItem(r, 0, new QTableWidgetItem(QLocale().toString(rows[r].date, QLocale::ShortFormat)));
        for (int meal = 1; meal <= meals; ++meal) {
            auto* mark = new QTableWidgetItem;
            mark->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            mark->setCheckState(rows[r].marks[size_t(meal - 1)] ? Qt::Checked : Qt::Unchecked);
            m_table->setItem(r, meal, mark);
        }
    }
    m_table->resizeColumnsToContents();
    if (m_presenter.currentRow() >= 0) m_table->selectRow(m_presenter.currentRow());
    m_edit->setEnabled(!rows.isEmpty());
}

} // namespace kb::ui
