#include "walkins/TFormCreditWalkIns.h"

#include "DietCodes.h"
#include "MessageError.h"
#include "ShownFailure.h"
#include "UserInterface.h"
#include "missed/MissEventText.h"
#include "selection/OriginDataSet.h"
#include "selection/RunStatements.h"
#include "session/SessionState.h"
#include "walkins/TFormViewEpisodicClientInfo.h"

namespace kb {

namespace {

// Every event not yet fulfilled up to a date. An event without a mark (null
// Fulfilled) is not fulfilled: SQL's comparison with null would leave it out,
// so the last clause says so outright.
const QString QueryEpisodicDeliveries = QStringLiteral(
    "select ed.RecordID, ed.Deliv_Date, ifnull( ed.Route then clients.def_rte else ed.Route) as Route, "
    "IfNull( "
    "ed.Stop then 0 else ed.Stop) as Stop, ed.Client_ID, ed.Person_ID, ed.Svcs_Used, ed.Delivery_Type, "
    "ed.Schedule_Type, ed.Fulfilled, clients.First_Name, clients.Mid_Name, clients.Last_Name, "
    "clients.Cuisine_ID, "
    "Clients.Cold_Bag_ID, clients.Diet_Restr, clients. org_Client, clients.address1, clients.city, "
    "clients.state, "
    "clients.zip, clients.Household_ID from EpisodicDeliveries ed, Clients where (ed.Deliv_Date <= "
    ":Deliv_Date) "
    "and (ed.Person_ID = clients.Person_ID) and (not ed.Person_ID is null) and (ed.Fulfilled is null or not "
    "(ed.Fulfilled = 'Y'))");

QString displayName(const OriginDataSet& row)
{
    QStringList parts;
    for (const char* column : {"First_Name", "Mid_Name", "Last_Name"}) {
        const QString part = row.text(QString::fromLatin1(column)).trimmed();
        if (!part.isEmpty()) parts << part;
    }
    return parts.join(QLatin1Char(' '));
}

} // namespace

TFormCreditWalkIns::TFormCreditWalkIns(Database& db, const SessionState& session, UserInterface& ui,
                                       QObject* parent)
    : QObject(parent), m_db(db), m_session(session), m_ui(ui), m_table(db),
      m_model(new MemTableDeliveriesModel(m_table, db, ui, this)),
      m_overrideQuery(db.query(RunStatements::overrideStatement())), m_aDietCodes(loadDietCodes(db)),
      m_through(db.clock().today())
{
    // The list spans dates: each row shows its own.
    m_model->setColumns(MemTableDeliveriesModel::datedGridColumns());
    setEnabled(RunAction::Prepare, true);
}

TFormCreditWalkIns::~TFormCreditWalkIns() = default;

void TFormCreditWalkIns::FormShow()
{
    m_table.createOrEmpty();
    m_model->setIndex(DeliveriesIndex::Last_Name);
    m_clientCountText.clear();
    emit stateChanged();
}

void TFormCreditWalkIns::FormClose()
{
    m_model->detach();
    m_table.drop();
}

void TFormCreditWalkIns::setThrough(const QDate& date)
{
    if (!date.isValid() || date == m_through) return;
    m_through = date;
    setEnabled(RunAction::SaveData, false);
    emit stateChanged();
}

bool TFormCreditWalkIns::isEnabled(RunAction action) const
{
    if (action == RunAction::SaveData) return m_enabled[int(action)] && m_session.access().mayChangeData();
    return m_enabled[int(action)];
}

void TFormCreditWalkIns::sortByTitle(const QString& title)
{
    if (const auto index = MemTableDeliveriesModel::indexForTitle(title)) m_model->setIndex(*index);
}

bool TFormCreditWalkIns::ActionExportData(const GridExportOptions& options,
                                          const std::vector<int>& selectedRows)
{
    if (!isEnabled(RunAction::ExportData)) return false;
    return exportDeliveriesGrid(*m_model, options, selectedRows, m_ui);
}

QString TFormCreditWalkIns::listingHeading() const
{
    return QStringLiteral("Episodic events through ") + miss_text::shortDate(m_listedThrough);
}

bool TFormCreditWalkIns::ActionQuickClientsListing()
{
    if (!isEnabled(RunAction::QuickClientsListing)) return false;
    return printDeliveriesListing(m_table, *m_model, m_quickListingPrinter, listingHeading(), m_ui);
}

bool TFormCreditWalkIns::mayDeleteEpisodicEventsOf(int gridRow) const
{
    return gridRow >= 0 && gridRow < m_model->rowCount() && m_session.access().mayChangeData();
}

bool TFormCreditWalkIns::ActionDeleteEpisodicEvents(int gridRow, const ShowClientInfo& show)
{
    if (!mayDeleteEpisodicEventsOf(gridRow)) return false;
    const qint64 personId = m_model->field(gridRow, QStringLiteral("Person_ID")).toLongLong();
    TFormViewEpisodicClientInfo info(m_db, m_session, m_ui, personId, m_through);
    if (!showingFailure(m_ui, [&] { info.FormShow(); })) return false;
    if (!show(info)) return false;
    ActionApplyChanges();
    return true;
}

bool TFormCreditWalkIns::addRow(const OriginDataSet& event)
{
    const QDate date = event.value(QStringLiteral("Deliv_Date")).toDate();
    const qint64 personId = event.value(QStringLiteral("Person_ID")).toLongLong();
    std::optional<AddressOverride> over;
    if (m_lookups.enableAlternateAddresses())
        over = AddressOverrides::lookUpOne(m_overrideQuery, personId, RunStatements::dayCode(date), date);

    DeliveryRow row;
    row.fullName = displayName(event);
    const QString route = event.text(QStringLiteral("Route"));
    if (route.trimmed().isEmpty()) {
        m_ui.error(row.fullName + QStringLiteral(" is missing a Route for ") + miss_text::shortDate(date) +
                   QStringLiteral(". This date will not appear in the list to be credited!"));
        return false;
    }
    row.deliveryDate = date;
    const QString clientId = event.text(QStringLiteral("Client_ID"));
    row.clientId = clientId.trimmed().isEmpty() ? QStringLiteral("XXXX.X") : clientId;
    if (personId == 0) {
        m_ui.error(row.fullName +
                   QStringLiteral(" is missing a Person ID and will not appear in the list to be credited!"));
        return false;
    }
    row.personId = personId;
    row.svcsUsed = event.value(QStringLiteral("Svcs_Used")).toLongLong();
    row.servicesUsedNamed = m_lookups.serviceName(row.svcsUsed);
    if (row.servicesUsedNamed == QLatin1String("Unknown")) {
        m_ui.error(row.fullName + QStringLiteral(" has an invalid Service for ") +
                   miss_text::shortDate(date) +
                   QStringLiteral(". This date will not appear in the list to be credited!"));
        return false;
    }
    row.dietRestr = event.value(QStringLiteral("Diet_Restr")).toLongLong();
    row.dietRestrictionsNamed = ConvertDietCode(row.dietRestr, m_aDietCodes);
    row.congregate = event.text(QStringLiteral("Org_Client")) == QLatin1String("Y");
    // As in a run, a client without a cuisine or cold bag stores 0.
    const auto zeroWhenNull = [&](const char* column) {
        const QVariant& v = event.value(QString::fromLatin1(column));
        return v.isNull() ? QVariant(qint64(0)) : v;
    };
    row.cuisineId = zeroWhenNull("Cuisine_ID");
    row.coldBagId = zeroWhenNull("Cold_Bag_ID");
    row.deliveryType =
        event.text(QStringLiteral("Schedule_Type")) + event.text(QStringLiteral("Delivery_Type"));
    row.delivId = event.value(QStringLiteral("RecordID")).toLongLong();
    row.firstName = event.text(QStringLiteral("First_Name")).toUpper();
    row.lastName = event.text(QStringLiteral("Last_Name")).toUpper();
    const qint64 household = event.value(QStringLiteral("Household_ID")).toLongLong();
    if (household > 0) {
        row.householdId = household;
        row.householdName = m_lookups.householdName(household);
    }
    if (over) {
        row.routeId = over->route;
        row.stop = over->stop;
        row.takeAddress(*over);
    } else {
        row.routeId = route;
        row.stop = event.value(QStringLiteral("Stop")).toDouble();
        row.address1 = event.value(QStringLiteral("Address1"));
        row.city = event.value(QStringLiteral("City"));
        row.state = event.value(QStringLiteral("State"));
        row.zip = event.value(QStringLiteral("Zip"));
    }
    m_statuses.insert(row.delivId, event.text(QStringLiteral("Fulfilled")) == QLatin1String("C")
                                       ? QStringLiteral("C")
                                       : QString());
    m_table.insert(row);
    return true;
}

void TFormCreditWalkIns::ActionApplyChanges()
{
    const BusyGuard busy(m_ui);
    m_model->detach();
    m_statuses.clear();
    bool complete = false;
    showingFailure(m_ui, [&] {
        if (!m_table.exists()) m_table.createOrEmpty();
        m_table.empty();
        m_lookups.load(m_db, m_through);
        Query select = m_db.query(QueryEpisodicDeliveries);
        OriginDataSet events(select.bind(QStringLiteral("Deliv_Date"), m_through).exec());
        TransactionGuard fill(m_db, Database::TransactionKind::MemoryOnly);
        complete = true;
        for (qsizetype r = 0; r < events.rowCount() && complete; ++r) {
            events.setCurrentRow(r);
            complete = addRow(events);
        }
        m_table.flush();
        fill.commit();
    });
    const qint64 count = m_table.exists() ? m_table.rowCount() : 0;
    m_model->setIndex(DeliveriesIndex::Last_Name);
    m_clientCountText = QStringLiteral("Client Count: ") + QString::number(count);
    m_listedThrough = m_through;
    // A listing that stopped short keeps its rows in view, to look at and
    // export, but they are not offered for saving.
    setEnabled(RunAction::SaveData, complete && count > 0);
    for (RunAction a : {RunAction::ExportData, RunAction::QuickClientsListing})
        setEnabled(a, count > 0);
    emit stateChanged();
}

std::optional<CreditResult> TFormCreditWalkIns::ActionSaveData()
{
    if (!isEnabled(RunAction::SaveData)) return std::nullopt;
    const BusyGuard busy(m_ui);
    std::optional<CreditResult> result;
    showingFailure(m_ui, [&] {
        if (m_db.inTransaction())
            throw MessageError(QStringLiteral("Unable to start transaction! There is probably an earlier \r\n"
                                              "transaction which did not successfully commit."));
        CreditSaver saver(m_db, m_ui, m_table);
        result = saver.save(m_listedThrough, m_statuses, m_session.userFullName);
    });
    m_ui.progressEnd();
    // Credited, or failed: either way this list is not offered again.
    setEnabled(RunAction::SaveData, false);
    emit stateChanged();
    return result;
}

} // namespace kb
