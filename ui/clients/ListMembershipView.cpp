#include "clients/ListMembershipView.h"

#include "FormPlacement.h"
#include "lists/TFormListMembership.h"
#include "records/RecordServices.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

// Invited and Confirmed hold "Y" or "N".
const char* const FlagColumns[] = {"Invited", "Confirmed"};

} // namespace

ListMembershipView::ListMembershipView(TFormListMembership& presenter, RecordServices& services,
                                       SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_services(services), m_members(new QTableWidget(this)),
      m_available(new QListWidget(this)), m_add(new QPushButton(QStringLiteral("Add Client to List"), this)),
      m_remove(new QPushButton(QStringLiteral("Remove Client From List"), this))
{
    setWindowTitle(presenter.caption());
    m_members->setObjectName(QStringLiteral("Members"));
    m_available->setObjectName(QStringLiteral("Available"));
    m_members->setColumnCount(4);
    m_members->setHorizontalHeaderLabels({QStringLiteral("List"), QStringLiteral("Invited"),
                                          QStringLiteral("Confirmed"), QStringLiteral("Added")});
    m_members->verticalHeader()->hide();
    m_members->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_members->setSelectionMode(QAbstractItemView::SingleSelection);
    m_members->setEditTriggers(QAbstractItemView::NoEditTriggers);

    auto* membersBox = new QGroupBox(QStringLiteral("Lists this client is on"), this);
    auto* membersLayout = new QVBoxLayout(membersBox);
    membersLayout->addWidget(m_members, 1);
    membersLayout->addWidget(m_remove, 0, Qt::AlignLeft);
    auto* availableBox = new QGroupBox(QStringLiteral("Available Lists"), this);
    auto* availableLayout = new QVBoxLayout(availableBox);
    availableLayout->addWidget(m_available, 1);
    availableLayout->addWidget(m_add, 0, Qt::AlignLeft);

    auto* panels = new QHBoxLayout;
    panels->addWidget(membersBox, 3);
    panels->addWidget(availableBox, 2);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(panels, 1);
    if (!presenter.listsVisible()) {
        membersBox->hide();
        availableBox->hide();
        layout->insertWidget(0,
                             new QLabel(QStringLiteral("Lists are not shown at your access level."), this));
    }
    layout->addWidget(buttons);
    m_add->setVisible(presenter.mayChange());
    m_remove->setVisible(presenter.mayChange());

    connect(m_add, &QPushButton::clicked, this, [this] {
        const int row = m_available->currentRow();
        m_services.guarded([&] { m_presenter.AddClientToList(row); });
        showLists();
    });
    connect(m_available, &QListWidget::itemDoubleClicked, m_add, &QPushButton::click);
    connect(m_remove, &QPushButton::clicked, this, [this] {
        const int row = m_members->currentRow();
        if (row < 0) return;
        m_services.guarded([&] { m_presenter.RemoveClientFromList(row); });
        showLists();
    });
    connect(m_members, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        if (m_showing || item->column() < 1 || item->column() > 2) return;
        const QString column = QString::fromLatin1(FlagColumns[item->column() - 1]);
        const QString value = item->checkState() == Qt::Checked ? QStringLiteral("Y") : QStringLiteral("N");
        const int row = item->row();
        m_services.guarded([&] { m_presenter.setMemberValue(row, column, value); });
        showLists();
    });
    showLists();
    keepPlacement(*this, settings, QStringLiteral("TFormListMembership"), QSize(680, 380));
}

void ListMembershipView::showLists()
{
    m_showing = true;
    QueryDataSet& members = m_presenter.members();
    const int current = m_members->currentRow();
    m_members->setRowCount(members.isActive() ? members.recordCount() : 0);
    if (members.isActive()) {
        const int name = members.fieldIndex(u"List_Name");
        const int created = members.fieldIndex(u"Create_Date");
        for (int r = 0; r < members.recordCount(); ++r) {
            m_members->setItem(r, 0,
                               new QTableWidgetItem(members.fieldValueAt(r, name).toString().trimmed()));
            for (int f = 0; f < 2; ++f) {
                auto* item = new QTableWidgetItem;
                const QString flag =
                    members.fieldValueAt(r, members.fieldIndex(QString::fromLatin1(FlagColumns[f])))
                        .toString();
                item->setCheckState(flag == QLatin1String("Y") ? Qt::Checked : Qt::Unchecked);
                item->setFlags(m_presenter.mayChange() ? Qt::ItemIsEnabled | Qt::ItemIsUserCheckable
                                                       : Qt::ItemIsEnabled);
                m_members->setItem(r, f + 1, item);
            }
            m_members->setItem(
                r, 3,
                new QTableWidgetItem(
                    members.fieldValueAt(r, created).toDate().toString(QStringLiteral("MM/dd/yyyy"))));
        }
    }
    m_members->resizeColumnsToContents();
    m_members->horizontalHeader()->setStretchLastSection(true);
    if (m_members->rowCount() > 0) m_members->selectRow(std::clamp(current, 0, m_members->rowCount() - 1));

    QueryDataSet& available = m_presenter.available();
    m_available->clear();
    if (available.isActive()) {
        const int name = available.fieldIndex(u"List_Name");
        for (int r = 0; r < available.recordCount(); ++r)
            m_available->addItem(available.fieldValueAt(r, name).toString().trimmed());
    }
    if (m_available->count() > 0) m_available->setCurrentRow(0);
    m_remove->setEnabled(m_members->rowCount() > 0);
    m_showing = false;
}

} // namespace kb::ui
