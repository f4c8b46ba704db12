#include "defaults/TFormSetDefaultDeliveries.h"

#include "UserInterface.h"
#include "dataset/QueryDataSet.h"
#include "defaults/Weekdays.h"
#include "records/DataSetActions.h"
#include "records/RecordServices.h"
#include "settings/ConfigRecord.h"
#include "store/Database.h"

namespace kb {

namespace {

const QString ListText = QStringLiteral("Select * from DefDels where Person_ID = 0 and Service_ID = "
                                        ":nService_ID and Del_Day = :cDay and Deliv_ID "
                                        "is null order by Sort_Order");
// Moves the other lines of the list out of the way of a line that moves.
const QString ShiftText = QStringLiteral(
    "Update DefDels set Sort_Order = :New_Sort where (Service_ID = :Service_ID) and (Sort_Order = :Old_Sort) "
    "and "
    "(Del_Day = :Del_Day) and not (RecordID = :RecordID) and (Person_ID = 0) and (Deliv_ID is null)");
const QString HighestText = QStringLiteral(
    "Select max(Sort_Order) as Highest from DefDels where Person_ID = 0 and Service_ID = :nService_ID and "
    "Del_Day = :cDay and Deliv_ID is null");

bool editing(const QueryDataSet& set)
{
    return set.state() == DataSet::State::Edit || set.state() == DataSet::State::Insert;
}

} // namespace

TFormSetDefaultDeliveries::TFormSetDefaultDeliveries(RecordServices& services)
    : TFormSetDefaultDeliveries(services, ListText)
{
}

TFormSetDefaultDeliveries::TFormSetDefaultDeliveries(RecordServices& services, const QString& listText)
    : m_recordServices(services), m_db(services.db()), m_ui(services.ui()),
      m_list(std::make_unique<QueryDataSet>(services.db(), listText))
{
    m_list->setRequestLive(true);
    services.installErrorHooks(*m_list);
    m_list->addLookupField(QStringLiteral("Item"), QStringLiteral("ITEM_ID"), QStringLiteral("Items"),
                           QStringLiteral("Item_ID"), QStringLiteral("Meal_Item"));
}

TFormSetDefaultDeliveries::~TFormSetDefaultDeliveries() = default;

bool TFormSetDefaultDeliveries::guarded(const std::function<void()>& work)
{
    return m_recordServices.guarded(work);
}

bool TFormSetDefaultDeliveries::readOnly() const
{
    return !m_db.mayWrite();
}

void TFormSetDefaultDeliveries::FormShow()
{
    guarded([this] {
        readServices();
        readDays();
        readItems();
    });
    m_serviceIndex = m_serviceEntries.isEmpty() ? -1 : 0;
    m_day = -1;
    for (int d = 0; d < 7 && m_day < 0; ++d)
        if (m_dayEnabled[size_t(d)]) m_day = d;
    guarded([this] { reopen(); });
}

bool TFormSetDefaultDeliveries::FormClose()
{
    if (editing(*m_list)) {
        if (m_ui.question(closeQuestion(), Buttons::YesNo) == Answer::Yes) {
            if (!guarded([this] { m_list->post(); })) return false;
        } else {
            guarded([this] { m_list->cancel(); });
        }
    }
    guarded([this] { m_list->close(); });
    return true;
}

void TFormSetDefaultDeliveries::readServices()
{
    m_serviceEntries.clear();
    const ResultSet rows = m_db.execute(QStringLiteral(
        "Select Service_ID, Service_Desc from Services where Service_Type = 'D' order by Service_ID"));
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const QString description = rows.value(r, 1).toString().trimmed();
        // The custom lists of clients are no service's default.
        if (QStringLiteral("CUSTOM").contains(description.toUpper())) continue;
        m_serviceEntries.append(rows.value(r, 0).toString() + QStringLiteral(" - ") + description);
    }
}

void TFormSetDefaultDeliveries::readDays()
{
    const ConfigRecord config = ConfigRecord::read(m_db);
    for (int d = 0; d < 7; ++d)
        m_dayEnabled[size_t(d)] = config.flag(weekdays()[size_t(d)].configDay);
}

void TFormSetDefaultDeliveries::readItems()
{
    m_items.clear();
    const ResultSet rows =
        m_db.execute(QStringLiteral("Select Item_ID, Meal_Item from Items Order by Meal_Item NoCase"));
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        m_items.append({rows.value(r, 0).toLongLong(), rows.value(r, 1).toString()});
}

qint64 TFormSetDefaultDeliveries::serviceIdOf(const QString& entry)
{
    return entry.section(QLatin1Char('-'), 0, 0).trimmed().toLongLong();
}

qint64 TFormSetDefaultDeliveries::serviceId() const
{
    if (m_serviceIndex < 0 || m_serviceIndex >= m_serviceEntries.size()) return 0;
    return serviceIdOf(m_serviceEntries[m_serviceIndex]);
}

void TFormSetDefaultDeliveries::bindList(QueryDataSet& list)
{
    list.setParam(QStringLiteral("nService_ID"), serviceId());
    // No day: a list no line can belong to, shown empty.
    list.setParam(QStringLiteral("cDay"), m_day < 0 ? QString() : weekdays()[size_t(m_day)].code);
}

void TFormSetDefaultDeliveries::reopen()
{
    m_list->close();
    bindList(*m_list);
    OpenQuery(*m_list);
}

void TFormSetDefaultDeliveries::showOnly(const QString& serviceEntry, int day)
{
    m_serviceEntries = {serviceEntry};
    m_serviceIndex = 0;
    m_dayEnabled.fill(false);
    m_day = day;
}

void TFormSetDefaultDeliveries::setServiceIndex(int index)
{
    if (index < 0 || index >= m_serviceEntries.size() || index == m_serviceIndex) return;
    if (!guarded([this] { m_list->checkBrowseMode(); })) return;
    m_serviceIndex = index;
    guarded([this] { reopen(); });
}

void TFormSetDefaultDeliveries::setDay(int day)
{
    if (day < 0 || day > 6 || !m_dayEnabled[size_t(day)] || day == m_day) return;
    if (!guarded([this] { m_list->checkBrowseMode(); })) return;
    m_day = day;
    guarded([this] { reopen(); });
}

bool TFormSetDefaultDeliveries::setValue(const QString& field, const QVariant& value)
{
    if (!m_list->isActive() || m_list->isEmpty()) return false;
    const bool counted = field.compare(QLatin1String("Quantity"), Qt::CaseInsensitive) == 0 ||
                         field.compare(QLatin1String("Sort_Order"), Qt::CaseInsensitive) == 0;
    if (counted && !value.isNull()) {
        bool ok = false;
        const int n = value.toInt(&ok);
        if (!ok || n < 0 || n > 999) {
            m_ui.warning(rangeText());
            return false;
        }
    }
    return guarded([&] {
        if (m_list->state() == DataSet::State::Browse) m_list->edit();
        m_list->setFieldValue(field, value);
    });
}

bool TFormSetDefaultDeliveries::post()
{
    return guarded([this] { m_list->checkBrowseMode(); });
}

int TFormSetDefaultDeliveries::highestSortOrder()
{
    const ResultSet r = m_db.execute(HighestText, {{QStringLiteral("nService_ID"), serviceId()},
                                                   {QStringLiteral("cDay"), weekdays()[size_t(m_day)].code}});
    return r.isEmpty() || r.value(0, 0).isNull() ? 0 : r.value(0, 0).toInt();
}

void TFormSetDefaultDeliveries::ActionAddItem()
{
    if (m_day < 0 || serviceId() <= 0) return;
    guarded([this] {
        m_list->checkBrowseMode();
        const int highest = highestSortOrder();
        m_list->append();
        m_list->setFieldValue(u"Person_ID", 0);
        m_list->setFieldValue(u"Service_ID", serviceId());
        m_list->setFieldValue(u"Del_Day", weekdays()[size_t(m_day)].code);
        m_list->setFieldValue(u"Quantity", 1);
        m_list->setFieldValue(u"Sort_Order", highest + 1);
        m_list->post();
        m_list->refresh();
        m_list->last();
    });
}

void TFormSetDefaultDeliveries::ActionDeleteItem()
{
    if (!m_list->isActive() || m_list->isEmpty()) return;
    if (m_ui.question(deleteQuestion(), Buttons::YesNo) != Answer::Yes) return;
    guarded([this] { m_list->remove(); });
}

void TFormSetDefaultDeliveries::moveBy(int step)
{
    if (!m_list->isActive() || m_list->isEmpty()) return;
    guarded([&] {
        m_list->checkBrowseMode();
        const int current = m_list->fieldValue(u"Sort_Order").toInt();
        if (step < 0 && current <= 1) return;
        if (step > 0 && (current < 1 || highestSortOrder() <= current)) return;
        const qint64 recordId = m_list->fieldValue(u"RecordID").toLongLong();
        shiftOthers(current, current + step, recordId);
        m_list->edit();
        m_list->setFieldValue(u"Sort_Order", current + step);
        m_list->post();
        m_list->refresh();
        m_list->locate(QStringLiteral("RecordID"), recordId);
    });
}

void TFormSetDefaultDeliveries::shiftOthers(int newSort, int oldSort, qint64 recordId)
{
    m_db.execute(ShiftText, {{QStringLiteral("New_Sort"), newSort},
                             {QStringLiteral("Service_ID"), serviceId()},
                             {QStringLiteral("Old_Sort"), oldSort},
                             {QStringLiteral("Del_Day"), weekdays()[size_t(m_day)].code},
                             {QStringLiteral("RecordID"), recordId}});
}

void TFormSetDefaultDeliveries::ActionMoveUp()
{
    moveBy(-1);
}

void TFormSetDefaultDeliveries::ActionMoveDown()
{
    moveBy(1);
}

void TFormSetDefaultDeliveries::ActionDupeMonday()
{
    if (serviceId() <= 0) return;
    guarded([this] {
        m_list->checkBrowseMode();
        const ResultSet monday = m_db.execute(
            QStringLiteral(
                "Select Item_ID, Quantity, Sort_Order from DefDels where Person_ID = 0 and Service_ID = "
                ":nService_ID and Del_Day = 'MON' and Deliv_ID is null order by Sort_Order"),
            {{QStringLiteral("nService_ID"), serviceId()}});
        std::vector<Params> rows;
        for (int d = 1; d < 7; ++d) {
            if (!m_dayEnabled[size_t(d)]) continue;
            for (qsizetype r = 0; r < monday.rowCount(); ++r)
                rows.push_back({{QStringLiteral("nDel_Day"), weekdays()[size_t(d)].code},
                                {QStringLiteral("nItem_ID"), monday.value(r, 0)},
                                {QStringLiteral("nQuantity"), monday.value(r, 1)},
                                {QStringLiteral("nSort_Order"), monday.value(r, 2)}});
        }
        if (!rows.empty())
            m_db.query(
                    QStringLiteral("Insert into DefDels (Person_ID, Service_ID, Del_Day, Item_ID, Quantity, "
                                   "Sort_Order) values (:nPerson_ID, :nService_ID, :nDel_Day, :nItem_ID, "
                                   ":nQuantity, :nSort_Order)"))
                .bind(QStringLiteral("nPerson_ID"), 0)
                .bind(QStringLiteral("nService_ID"), serviceId())
                .execBatch(rows);
        reopen();
    });
}

} // namespace kb
