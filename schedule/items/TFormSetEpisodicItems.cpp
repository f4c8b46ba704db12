#include "items/TFormSetEpisodicItems.h"

#include "UserInterface.h"
#include "dataset/QueryDataSet.h"
#include "defaults/Weekdays.h"
#include "records/DataSetActions.h"
#include "records/RecordServices.h"
#include "store/Database.h"

namespace kb {

namespace {

const QString ListText = QStringLiteral(
    "Select * from DefDels where Person_ID = :Person_ID and Deliv_ID = :Deliv_ID order by Sort_Order");
const QString ComparisonText = QStringLiteral(
    "Select * from DefDels where Person_ID = :nPerson_ID and Service_ID = :nService_ID and Del_Day = :cDay "
    "and Deliv_ID is null order by Sort_Order");

} // namespace

TFormSetEpisodicItems::TFormSetEpisodicItems(RecordServices& services, qint64 personId, qint64 delivId,
                                             qint64 serviceId, const QDate& date)
    : TFormSetDefaultDeliveries(services, ListText), m_personId(personId), m_delivId(delivId),
      m_serviceId(serviceId), m_date(date),
      m_comparison(std::make_unique<QueryDataSet>(services.db(), ComparisonText))
{
    services.installErrorHooks(*m_comparison);
    m_comparison->addLookupField(QStringLiteral("Item"), QStringLiteral("ITEM_ID"), QStringLiteral("Items"),
                                 QStringLiteral("Item_ID"), QStringLiteral("Meal_Item"));
}

TFormSetEpisodicItems::~TFormSetEpisodicItems() = default;

void TFormSetEpisodicItems::FormShow()
{
    guarded([this] {
        readItems();
        const ResultSet service =
            m_db.execute(QStringLiteral("Select Service_Desc from Services where Service_ID = :Service_ID"),
                         {{QStringLiteral("Service_ID"), m_serviceId}});
        QString entry = QString::number(m_serviceId);
        if (!service.isEmpty()) entry += QStringLiteral(" - ") + service.value(0, 0).toString().trimmed();
        // Only the delivery's own weekday is shown, and nothing else can be chosen.
        showOnly(entry, weekdayIndex(m_date));
        reopen();
        openComparison();
    });
}

bool TFormSetEpisodicItems::FormClose()
{
    if (!TFormSetDefaultDeliveries::FormClose()) return false;
    guarded([this] { m_comparison->close(); });
    return true;
}

void TFormSetEpisodicItems::openComparison()
{
    // The client's standing list replaces the default as a whole, so the
    // default is only shown when he has none for this service and day.
    for (const qint64 person : {m_personId, qint64(0)}) {
        m_comparison->close();
        m_comparison->setParam(QStringLiteral("nPerson_ID"), person);
        m_comparison->setParam(QStringLiteral("nService_ID"), m_serviceId);
        m_comparison->setParam(QStringLiteral("cDay"), weekdayOf(m_date).code);
        OpenQuery(*m_comparison);
        m_comparisonPerson = person;
        if (!m_comparison->isEmpty()) return;
    }
}

void TFormSetEpisodicItems::bindList(QueryDataSet& list)
{
    list.setParam(QStringLiteral("Person_ID"), m_personId);
    list.setParam(QStringLiteral("Deliv_ID"), m_delivId);
}

int TFormSetEpisodicItems::highestSortOrder()
{
    const ResultSet r = m_db.execute(
        QStringLiteral(
            "Select max(Sort_Order) from DefDels where Person_ID = :Person_ID and Deliv_ID = :Deliv_ID"),
        {{QStringLiteral("Person_ID"), m_personId}, {QStringLiteral("Deliv_ID"), m_delivId}});
    return r.isEmpty() || r.value(0, 0).isNull() ? 0 : r.value(0, 0).toInt();
}

void TFormSetEpisodicItems::shiftOthers(int newSort, int oldSort, qint64 recordId)
{
    m_db.execute(
        QStringLiteral("Update DefDels set Sort_Order = :New_Sort where (Person_ID = :Person_ID) and "
                       "(Deliv_ID = :Deliv_ID) and (Sort_Order = :Old_Sort) and not (RecordID = "
                       ":RecordID)"),
        {{QStringLiteral("New_Sort"), newSort},
         {QStringLiteral("Person_ID"), m_personId},
         {QStringLiteral("Deliv_ID"), m_delivId},
         {QStringLiteral("Old_Sort"), oldSort},
         {QStringLiteral("RecordID"), recordId}});
}

void TFormSetEpisodicItems::ActionAddItem()
{
    guarded([this] {
        m_list->checkBrowseMode();
        m_db.execute(
            QStringLiteral("Insert into DefDels (Person_ID, Deliv_ID, Service_ID, Del_Day, Quantity, "
                           "Sort_Order) Values (:Person_ID, :Deliv_ID, :Service_ID, :Del_Day, "
                           ":Quantity, :Sort_Order)"),
            {{QStringLiteral("Person_ID"), m_personId},
             {QStringLiteral("Deliv_ID"), m_delivId},
             {QStringLiteral("Service_ID"), m_serviceId},
             {QStringLiteral("Del_Day"), weekdayOf(m_date).code},
             {QStringLiteral("Quantity"), 1},
             {QStringLiteral("Sort_Order"), highestSortOrder() + 1}});
        m_list->refresh();
        m_list->last();
    });
}

void TFormSetEpisodicItems::ActionClear()
{
    if (m_ui.question(clearQuestion(), Buttons::YesNo) != Answer::Yes) return;
    guarded([this] {
        if (m_list->state() != DataSet::State::Browse) m_list->cancel();
        m_db.execute(
            QStringLiteral("Delete from DefDels where Person_ID = :Person_ID and Deliv_ID = :Deliv_ID"),
            {{QStringLiteral("Person_ID"), m_personId}, {QStringLiteral("Deliv_ID"), m_delivId}});
        reopen();
    });
}

void TFormSetEpisodicItems::ActionCopy()
{
    guarded([this] {
        m_list->checkBrowseMode();
        std::vector<Params> rows;
        const int item = m_comparison->fieldIndex(u"Item_ID");
        const int quantity = m_comparison->fieldIndex(u"Quantity");
        const int order = m_comparison->fieldIndex(u"Sort_Order");
        for (int r = 0; r < m_comparison->recordCount(); ++r)
            rows.push_back({{QStringLiteral("Item_ID"), m_comparison->fieldValueAt(r, item)},
                            {QStringLiteral("Quantity"), m_comparison->fieldValueAt(r, quantity)},
                            {QStringLiteral("Sort_Order"), m_comparison->fieldValueAt(r, order)}});
        if (!rows.empty())
            m_db.query(
                    QStringLiteral("Insert into DefDels (Person_ID, Deliv_ID, Service_ID, Del_Day, Item_ID, "
                                   "Quantity, Sort_Order) Values (:Person_ID, :Deliv_ID, :Service_ID, "
                                   ":Del_Day, :Item_ID, :Quantity, :Sort_Order)"))
                .bind(QStringLiteral("Person_ID"), m_personId)
                .bind(QStringLiteral("Deliv_ID"), m_delivId)
                .bind(QStringLiteral("Service_ID"), m_serviceId)
                .bind(QStringLiteral("Del_Day"), weekdayOf(m_date).code)
                .execBatch(rows);
        reopen();
    });
}

} // namespace kb
