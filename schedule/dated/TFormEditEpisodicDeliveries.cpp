#include "dated/TFormEditEpisodicDeliveries.h"

#include "MessageError.h"
#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "items/TFormSetEpisodicItems.h"
#include "store/Database.h"
#include "store/DbError.h"

namespace kb {

namespace {

DatedClient readClient(Database& db, qint64 personId)
{
    std::optional<DatedClient> client = DatedClient::byPersonId(db, personId);
    if (!client) throw MessageError(QStringLiteral("No person has Person_ID %1.").arg(personId));
    return *client;
}

QString workingSetText(DatedKind kind)
{
    if (kind == DatedKind::Episodic)
        return QStringLiteral(
            "select * from EpisodicDeliveries where Person_ID = :Person_ID and Schedule_Type = "
            "'E' order by Deliv_Date descending");
    return QStringLiteral(
        "select * from EpisodicDeliveries where Person_ID = :Person_ID and (not Person_ID is null ) "
        "and Schedule_Type = 'S' order by Deliv_Date descending");
}

} // namespace

DeliveryDeletionOptions DeliveryDeletionOptions::defaults(const QDate& today)
{
    DeliveryDeletionOptions o;
    o.beginning = today;
    o.ending = today.addDays(1);
    return o;
}

void DeliveryDeletionOptions::setBeginning(const QDate& date)
{
    beginning = date;
    if (ending < beginning) ending = beginning;
}

void DeliveryDeletionOptions::setEnding(const QDate& date)
{
    ending = date;
    if (beginning > ending) beginning = ending;
}

TFormEditEpisodicDeliveries::TFormEditEpisodicDeliveries(Database& db, UserInterface& ui, QString userName,
                                                         qint64 personId)
    : TFormEditEpisodicDeliveries(db, ui, std::move(userName), personId, DatedKind::Episodic)
{
}

TFormEditEpisodicDeliveries::TFormEditEpisodicDeliveries(Database& db, UserInterface& ui, QString userName,
                                                         qint64 personId, DatedKind kind)
    : m_db(db), m_ui(ui), m_kind(kind), m_client(readClient(db, personId)),
      m_rules(db, ui, std::move(userName)), m_set(std::make_unique<QueryDataSet>(db, workingSetText(kind)))
{
    m_set->setParam(QStringLiteral("Person_ID"), personId);
    m_set->setRequestLive(true);
    m_rules.attachRules(*m_set, m_kind, [this] { return std::optional<DatedClient>(m_client); });
    m_set->addLookupField(QStringLiteral("Service"), QStringLiteral("Svcs_Used"), QStringLiteral("Services"),
                          QStringLiteral("Service_ID"), QStringLiteral("Service_Desc"));
    m_set->open();
}

TFormEditEpisodicDeliveries::~TFormEditEpisodicDeliveries() = default;

QString TFormEditEpisodicDeliveries::caption() const
{
    return datedScreenTitle(m_kind, m_client.name());
}

QDate TFormEditEpisodicDeliveries::lowestDate() const
{
    return m_client.lowestDate(m_db.clock().today());
}

QDate TFormEditEpisodicDeliveries::highestDate() const
{
    return m_client.highestDate(m_db.clock().today());
}

QDate TFormEditEpisodicDeliveries::initialDate() const
{
    return std::clamp(m_db.clock().today(), lowestDate(), std::max(lowestDate(), highestDate()));
}

QSet<QDate> TFormEditEpisodicDeliveries::deliveryDates() const
{
    QSet<QDate> dates;
    const int column = m_set->fieldIndex(u"Deliv_Date");
    for (int r = 0; r < m_set->recordCount(); ++r)
        dates.insert(m_set->fieldValueAt(r, column).toDate());
    return dates;
}

bool TFormEditEpisodicDeliveries::locateDate(const QDate& date)
{
    return m_set->locate(QStringLiteral("Deliv_Date"), date);
}

bool TFormEditEpisodicDeliveries::setItemsEnabled() const
{
    return m_set->isActive() && !m_set->isEmpty() && !DatedRow::fromDataSet(*m_set).credited();
}

bool TFormEditEpisodicDeliveries::deleteEnabled() const
{
    return m_set->isActive() && !m_set->isEmpty();
}

bool TFormEditEpisodicDeliveries::reassignRoutesEnabled() const
{
    return m_set->isActive() && m_db.mayWrite();
}

const DatedRowItems& TFormEditEpisodicDeliveries::itemsAt(int row)
{
    static const DatedRowItems none;
    if (!m_items) m_items = DatedRowItems::read(m_db, m_client.personId, m_kind);
    if (row < 0 || row >= m_set->recordCount()) return none;
    const auto it = m_items->constFind(m_set->fieldValueAt(row, m_set->fieldIndex(u"RecordID")).toLongLong());
    return it == m_items->constEnd() ? none : *it;
}

void TFormEditEpisodicDeliveries::reopen(qint64 recordId)
{
    m_items.reset();
    m_set->close();
    m_set->open();
    if (recordId > 0) m_set->locate(QStringLiteral("RecordID"), recordId);
}

void TFormEditEpisodicDeliveries::ActionAddDelivery(const std::optional<QDate>& calendarDate)
{
    m_set->checkBrowseMode();
    const QDate date = calendarDate ? *calendarDate : m_rules.keyboardDate(m_client, m_kind);
    const qint64 id = m_rules.add(m_client, m_kind, date);
    reopen(id);
}

int TFormEditEpisodicDeliveries::ActionDelete(const DeliveryDeletionOptions& options)
{
    m_set->checkBrowseMode();
    std::vector<DatedRow> rows;
    if (!options.range) {
        if (!m_set->isEmpty()) rows.push_back(DatedRow::fromDataSet(*m_set));
    } else {
        for (QDate d = options.beginning; d <= options.ending; d = d.addDays(1))
            if (locateDate(d)) rows.push_back(DatedRow::fromDataSet(*m_set));
    }
    int deleted = 0;
    try {
        for (const DatedRow& row : rows)
            if (m_rules.remove(row, m_kind, options.includeFulfilled)) ++deleted;
    } catch (...) {
        reopen(0);
        throw;
    }
    reopen(0);
    return deleted;
}

std::unique_ptr<TFormSetEpisodicItems> TFormEditEpisodicDeliveries::ActionSetItems(RecordServices& services)
{
    if (!m_set->isActive() || m_set->isEmpty()) return nullptr;
    // The items hang on the row's RecordID: a new row is saved first.
    m_set->checkBrowseMode();
    const DatedRow row = DatedRow::fromDataSet(*m_set);
    if (row.credited()) m_ui.information(creditedItemsText());
    auto items =
        std::make_unique<TFormSetEpisodicItems>(services, row.personId, row.recordId, row.service, row.date);
    items->setTitle(datedItemsTitle(m_kind, row.date));
    return items;
}

bool TFormEditEpisodicDeliveries::setRowValue(const QString& column, const QVariant& value)
{
    try {
        if (m_set->state() == DataSet::State::Browse) m_set->edit();
        m_set->setFieldValue(column, value);
        m_set->post();
        m_items.reset(); // a new date or service can change the standing items
        return true;
    } catch (const Abort&) {
        return false;
    }
}

void TFormEditEpisodicDeliveries::reload()
{
    m_set->checkBrowseMode();
    reopen(m_set->isEmpty() ? 0 : m_set->fieldValue(u"RecordID").toLongLong());
}

QString TFormEditEpisodicDeliveries::formName() const
{
    return m_kind == DatedKind::Episodic ? QStringLiteral("TFormEditEpisodicDeliveries")
                                         : QStringLiteral("TFormEditScheduledDeliveries");
}

void TFormEditEpisodicDeliveries::close()
{
    if (m_set->state() == DataSet::State::Edit || m_set->state() == DataSet::State::Insert) {
        if (m_ui.question(QStringLiteral("Save your changes to the delivery that you are editing?"),
                          Buttons::YesNo) == Answer::Yes) {
            try {
                m_set->post();
            } catch (const Abort&) {
                m_set->cancel();
            }
        } else {
            m_set->cancel();
        }
    }
    m_set->close();
}

} // namespace kb
