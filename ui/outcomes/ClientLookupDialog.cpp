#include "outcomes/ClientLookupDialog.h"

#include "FormPlacement.h"

#include <QAbstractTableModel>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kb::ui {

// The rows the look-up has read; the view asks for the next window when it
// scrolls to the end.
class ClientLookupModel : public QAbstractTableModel
{
public:
    explicit ClientLookupModel(ClientLookup& lookup, QObject* parent)
        : QAbstractTableModel(parent), m_lookup(lookup)
    {
    }

    void reload()
    {
        beginResetModel();
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_lookup.rows().size());
    }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(ClientLookup::columnCaptions().size());
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole || !index.isValid()) return {};
        return ClientLookup::cells(m_lookup.rows().at(size_t(index.row()))).value(index.column());
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return ClientLookup::columnCaptions().value(section);
    }
    bool canFetchMore(const QModelIndex& parent) const override
    {
        return !parent.isValid() && m_lookup.canFetchMore();
    }
    void fetchMore(const QModelIndex& parent) override
    {
        if (parent.isValid()) return;
        const int before = rowCount();
        m_lookup.fetchMore();
        const int after = rowCount();
        if (after <= before) return;
        // A re-read from the same start keeps the rows already shown.
        beginInsertRows({}, before, after - 1);
        endInsertRows();
    }

private:
    ClientLookup& m_lookup;
};

namespace {

// Up and down in the search box move in the list, so the user can type,
// step to the client and press Enter without leaving the box.
class ListKeys : public QObject
{
public:
    ListKeys(QTableView* table, QObject* parent) : QObject(parent), m_table(table) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
            QKeyEvent copy(QEvent::KeyPress, key, Qt::NoModifier);
            QCoreApplication::sendEvent(m_table, &copy);
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QTableView* m_table;
};

} // namespace

ClientLookupDialog::ClientLookupDialog(ClientLookup& lookup, SettingsFile& settings, const QString& text,
                                       QWidget* parent)
    : QDialog(parent), m_lookup(lookup), m_settings(settings)
{
    setWindowTitle(lookup.title());
    m_searchBy = new QComboBox;
    m_searchBy->addItems(ClientLookup::searchChoices());
    m_searchBy->setCurrentIndex(int(lookup.searchBy()));
    m_search = new QLineEdit(text);
    m_search->setClearButtonEnabled(true);
    m_status = new QLabel;
    m_table = new QTableView;
    m_model = new ClientLookupModel(lookup, this);
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setAlternatingRowColors(true);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 6);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_search->installEventFilter(new ListKeys(m_table, this));

    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(new QLabel(QStringLiteral("Search By:")));
    searchRow->addWidget(m_searchBy);
    searchRow->addSpacing(12);
    auto* forLabel = new QLabel(QStringLiteral("Search For:"));
    forLabel->setBuddy(m_search);
    searchRow->addWidget(forLabel);
    searchRow->addWidget(m_search, 1);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_ok = box->button(QDialogButtonBox::Ok);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(searchRow);
    layout->addWidget(m_table, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_status, 1);
    bottom->addWidget(box);
    layout->addLayout(bottom);

    connect(m_searchBy, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_lookup.setSearchBy(ClientLookup::SearchBy(index));
        m_model->reload();
        showState();
        m_search->setFocus();
    });
    connect(m_search, &QLineEdit::textChanged, this, [this] { search(); });
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                m_lookup.setCurrent(current.isValid() ? current.row() : -1);
                m_ok->setEnabled(m_lookup.okEnabled());
            });
    connect(m_table, &QTableView::doubleClicked, this, [this] { m_ok->click(); });
    connect(box, &QDialogButtonBox::accepted, this, [this] {
        m_chosen = m_lookup.choose();
        if (m_chosen) accept();
    });
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);

    search();
    m_table->resizeColumnsToContents();
    const QString section = QStringLiteral("ClientLookup");
    restoreColumnWidths(*m_table->horizontalHeader(), settings, section, QStringLiteral("Columns"));
    keepPlacement(*this, settings, QStringLiteral("ClientLookup"), QSize(860, 480));
    connect(this, &QDialog::finished, this, [this, section] {
        saveColumnWidths(*m_table->horizontalHeader(), m_settings, section, QStringLiteral("Columns"));
    });
    m_search->setFocus();
}

ClientLookupDialog::~ClientLookupDialog() = default;

void ClientLookupDialog::search()
{
    m_lookup.search(m_search->text());
    m_model->reload();
    showState();
}

void ClientLookupDialog::showState()
{
    if (m_lookup.current() >= 0) {
        m_table->setCurrentIndex(m_model->index(m_lookup.current(), 0));
        m_table->scrollTo(m_model->index(m_lookup.current(), 0), QAbstractItemView::PositionAtTop);
    }
    m_ok->setEnabled(m_lookup.okEnabled());
    if (m_lookup.rows().empty())
        m_status->setText(QStringLiteral("No client found."));
    else if (!m_lookup.searchText().trimmed().isEmpty() && !m_lookup.found())
        m_status->setText(QStringLiteral("No client begins with that text; the nearest is shown."));
    else
        m_status->clear();
}

} // namespace kb::ui
