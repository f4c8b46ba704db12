#include "TFormRunPrepare.h"

#include "DeliveryTypeEntry.h"
#include "DietCodes.h"
#include "IsDeliveryWeek.h"
#include "MessageError.h"
#include "UserInterface.h"
#include "confirmation/ConfirmDeliveryItems.h"
#include "confirmation/GivenItemConfirmation.h"
#include "dialogs/DateChoice.h"
#include "dialogs/GivenRunDialogs.h"
#include "dialogs/RunDialogs.h"
#include "selection/OriginDataSet.h"
#include "selection/RunStatements.h"
#include "session/SessionState.h"
#include "specialmeals/SpecialMealNames.h"
#include "specialmeals/TFormSetSpecialMeals.h"
#include "store/Database.h"
#include "store/DbError.h"

#include <QLocale>

namespace kb {

namespace {

QVariant zeroWhenNull(const QVariant& v)
{
    return v.isNull() ? QVariant(qint64(0)) : v;
}

QString fullNameOf(const OriginDataSet& row)
{
    QString name = row.text(QStringLiteral("First_Name")).trimmed();
    const QString mid = row.text(QStringLiteral("Mid_Name")).trimmed();
    const QString last = row.text(QStringLiteral("Last_Name")).trimmed();
    if (!mid.isEmpty()) name += QLatin1Char(' ') + mid;
    if (!last.isEmpty()) name += QLatin1Char(' ') + last;
    return name.trimmed();
}

// The text a failure shows: the system's own words, or the engine's message.
QString messageOf(const std::exception& e)
{
    if (const auto* m = dynamic_cast<const MessageError*>(&e)) return m->message();
    if (const auto* d = dynamic_cast<const DbError*>(&e)) return d->message();
    return QString::fromUtf8(e.what());
}

// Takes the progress box down however the work ends.
class ProgressGuard
{
public:
    explicit ProgressGuard(UserInterface& ui) : m_ui(ui) {}
    ~ProgressGuard() { m_ui.progressEnd(); }
    ProgressGuard(const ProgressGuard&) = delete;
    ProgressGuard& operator=(const ProgressGuard&) = delete;

private:
    UserInterface& m_ui;
};

} // namespace

TFormRunPrepare::TFormRunPrepare(Database& db, const SessionState& session, UserInterface& ui,
                                 QObject* parent)
    : QObject(parent), m_db(db), m_session(session), m_ui(ui), m_table(db),
      m_model(new MemTableDeliveriesModel(m_table, db, ui, this)),
      m_overrideQuery(db.query(RunStatements::overrideStatement())), m_specialLabels(db),
      m_saver(db, ui, m_table, m_specialLabels)
{
    m_aDietCodes = loadDietCodes(db);
    const ResultSet config = db.execute(QStringLiteral("Select Advance_Prep_Days from Config"));
    const int advance = config.isEmpty() ? 0 : config.value(0, 0).toInt();
    m_pickerDate = db.clock().today().addDays(advance);
    m_enabled[int(RunAction::Prepare)] = true;
    m_enabled[int(RunAction::PopulateGrid)] = true;
    connect(m_model, &MemTableDeliveriesModel::edited, this, [this] {
        m_saved = false;
        setEnabled(RunAction::SaveData, true);
        emit stateChanged();
    });
}

TFormRunPrepare::~TFormRunPrepare() = default;

void TFormRunPrepare::FormShow()
{
    m_table.createOrEmpty();
    m_specialLabels.create();
    m_model->setIndex(DeliveriesIndex::RouteStopClient);
    EnableActions(0);
    m_userText = m_session.userFullName;
    emit stateChanged();
}

void TFormRunPrepare::FormClose()
{
    FormCleanUp();
}

void TFormRunPrepare::FormCleanUp()
{
    m_model->detach();
    m_table.drop();
    m_specialLabels.drop();
    m_db.execute(QStringLiteral("Drop table if exists Memory MemMappingData"));
}

void TFormRunPrepare::SetPrepareDate(const QDate& date)
{
    if (date == m_pickerDate) return;
    m_pickerDate = date;
    // A run can be saved only under the date for which it was prepared.
    setEnabled(RunAction::SaveAs, false);
    setEnabled(RunAction::SaveData, false);
    emit stateChanged();
}

QString TFormRunPrepare::datePickerFormat()
{
    const bool monthFirst = QLocale().dateFormat(QLocale::ShortFormat).startsWith(u'M', Qt::CaseInsensitive);
    return monthFirst ? QStringLiteral("dddd MMMM d, yyyy") : QStringLiteral("dddd d MMMM, yyyy");
}

QStringList TFormRunPrepare::deliveryTypeTexts()
{
    QStringList texts;
    for (const DeliveryTypeEntry& e : deliveryTypeEntries())
        texts.append(e.text);
    return texts;
}

void TFormRunPrepare::setDeliveryTypeIndex(int index)
{
    if (index < 0 || index >= deliveryTypeEntries().size() || index == m_deliveryTypeIndex) return;
    m_deliveryTypeIndex = index;
    emit stateChanged();
}

void TFormRunPrepare::SetDeliveryType(QChar letter)
{
    const int index = kb::deliveryTypeIndex(letter);
    if (index < 0)
        throw std::invalid_argument(
            QStringLiteral("No delivery type has the letter %1").arg(letter).toStdString());
    setDeliveryTypeIndex(index);
}

void TFormRunPrepare::setEnabled(RunAction action, bool enabled)
{
    m_enabled[int(action)] = enabled;
}

bool TFormRunPrepare::isEnabled(RunAction action) const
{
    switch (action) {
    case RunAction::SaveData:
    case RunAction::SaveAs:
        // Read-only and reports-only users keep the grid but store nothing.
        return m_enabled[int(action)] && m_session.access().mayChangeData();
    case RunAction::PrintReport:
        return bool(m_reportScreen);
    default:
        return m_enabled[int(action)];
    }
}

void TFormRunPrepare::EnableActions(qint64 count)
{
    for (RunAction a : {RunAction::ApplyRouteChanges, RunAction::MapRoutes, RunAction::SaveAs,
                        RunAction::SaveData, RunAction::ExportData, RunAction::QuickClientsListing,
                        RunAction::ResetRoutes, RunAction::ResetStops, RunAction::IncrementStops,
                        RunAction::RemoveDeliveries, RunAction::RetrieveFromArcLogistics})
        setEnabled(a, count > 0);
    emit stateChanged();
}

ConfirmedItems TFormRunPrepare::ConfirmDeliveryItems()
{
    if (!m_runDate.isValid()) return {};
    GivenItemConfirmation nothing = GivenItemConfirmation::none();
    return confirmDeliveryItems(m_db, m_runDate, m_itemConfirmation ? *m_itemConfirmation : nothing);
}

RunItems TFormRunPrepare::FindRunItems(const ConfirmedItems& confirmed)
{
    if (!m_runDate.isValid() || !m_table.exists()) return {};
    return RunItems::find(m_db, m_table, m_runDate, confirmed);
}

void TFormRunPrepare::ActionPrepare()
{
    m_caption = QStringLiteral("Daily Run Preparation");
    setEnabled(RunAction::Prepare, false);
    m_gridVisible = false;
    emit stateChanged();
    BusyGuard busy(m_ui);
    // The grid is detached from the working table while it fills, and the
    // commands come back also when an error ends the preparation early.
    m_model->detach();
    try {
        prepareRows();
    } catch (...) {
        finishPrepare();
        throw;
    }
    setRunCaption();
    finishPrepare();
}

void TFormRunPrepare::prepareRows()
{
    m_runDate = m_pickerDate;
    if (!m_table.exists()) m_table.createOrEmpty();
    m_table.empty();
    m_dow = RunStatements::dayCode(m_runDate);
    m_lookups.load(m_db, m_runDate);

    const DeliveryTypeEntry& entry = deliveryTypeEntries()[m_deliveryTypeIndex];
    fillTable([&] {
        if (entry.ongoing) runOngoing();
        if (entry.episodic) runDated(false);
        if (entry.scheduled) runDated(true);
    });
}

void TFormRunPrepare::fillTable(const std::function<void()>& work)
{
    // The rows go in together: one write of the session's private table, not
    // one per row. Filling only reads the stored tables, so the transaction
    // leaves the data's write lock to the other workstations.
    std::optional<TransactionGuard> transaction;
    if (!m_db.inTransaction()) transaction.emplace(m_db, Database::TransactionKind::MemoryOnly);
    work();
    m_table.flush();
    if (transaction) transaction->commit();
}

void TFormRunPrepare::setRunCaption()
{
    const QLocale locale;
    m_caption = QStringLiteral("Daily Run Preparation: ") +
                locale.dayName(m_runDate.dayOfWeek(), QLocale::LongFormat) + QStringLiteral(", ") +
                locale.toString(m_runDate, QLocale::LongFormat);
}

void TFormRunPrepare::finishPrepare()
{
    const qint64 count = m_table.exists() ? m_table.rowCount() : 0;
    m_model->setIndex(DeliveriesIndex::RouteStopClient);
    m_clientCountText = QStringLiteral("Client Count: ") + QString::number(count);
    m_saved = false;
    setEnabled(RunAction::SaveData, true);
    EnableActions(count);
    m_gridVisible = count > 0;
    setEnabled(RunAction::Prepare, true);
    emit stateChanged();
}

void TFormRunPrepare::runOngoing()
{
    m_cDeliveryType = QStringLiteral("OD");
    Query select = m_db.query(RunStatements::ongoingSelection(m_runDate.dayOfWeek()));
    OriginDataSet rows(select.bind(QStringLiteral("Deliv_Date"), m_runDate).exec());
    const QString frequency = QStringLiteral("Ongoing_Frequency");
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        rows.setCurrentRow(r);
        if (IsDeliveryWeek(rows.text(frequency), m_runDate)) MoveToMemData(rows, true);
    }
}

void TFormRunPrepare::runDated(bool scheduled)
{
    const bool excludeSuspended = scheduled && m_lookups.suspendScheduledDeliveries();
    Query select = m_db.query(RunStatements::datedSelection(excludeSuspended));
    const QString type = scheduled ? QStringLiteral("S") : QStringLiteral("E");
    OriginDataSet rows(
        select.bind(QStringLiteral("Deliv_Date"), m_runDate)
            .bind(QStringLiteral("Schedule_Type"), type)
            .bind(QStringLiteral("Client_Schedule_Type"), scheduled ? QStringLiteral("O") : type)
            .exec());
    const QString deliveryType = QStringLiteral("Delivery_Type");
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        rows.setCurrentRow(r);
        m_cDeliveryType = type + rows.text(deliveryType);
        MoveToMemData(rows, true);
    }
}

void TFormRunPrepare::MoveToMemData(const OriginDataSet& origin, bool lFromScratch)
{
    const qint64 personId = origin.value(QStringLiteral("Person_ID")).toLongLong();
    std::optional<AddressOverride> over;
    if (lFromScratch) {
        if (m_lookups.enableAlternateAddresses()) over = m_lookups.overrides().find(personId);
    } else if (origin.value(QStringLiteral("Address_Overridden")).toBool()) {
        over = AddressOverrides::lookUpOne(m_overrideQuery, personId, m_dow, m_runDate);
        if (!over)
            over = AddressOverride{}; // gone since the save: the row keeps its flag, the address stays empty
    }

    DeliveryRow row;
    row.fullName = fullNameOf(origin);
    const QVariant& sourceRoute = origin.value(QStringLiteral("Route_ID"));
    if (sourceRoute.toString().trimmed().isEmpty())
        m_ui.error(row.fullName +
                   QStringLiteral(" is missing a Route for this day. Processing can not proceed!"));

    row.deliveryDate = m_runDate;
    row.clientId = origin.value(QStringLiteral("Client_ID"));
    row.personId = origin.value(QStringLiteral("Person_ID"));
    if (lFromScratch) {
        row.deliveryType = m_cDeliveryType;
        const QChar source = m_cDeliveryType.isEmpty() ? QChar() : m_cDeliveryType.at(0);
        row.delivId =
            (source == u'E' || source == u'S') ? origin.value(QStringLiteral("RecordID")).toLongLong() : 0;
    } else {
        row.deliveryType = origin.text(QStringLiteral("Delivery_Type"));
        row.delivId = origin.value(QStringLiteral("Deliv_ID")).toLongLong();
    }
    const qint64 household = origin.value(QStringLiteral("Household_ID")).toLongLong();
    if (household > 0) {
        row.householdId = household;
        row.householdName = m_lookups.householdName(household);
    }

    row.svcsUsed = origin.value(QStringLiteral("Svcs_Used")).toLongLong();
    row.servicesUsedNamed = m_lookups.serviceName(row.svcsUsed);
    row.cuisineId = zeroWhenNull(origin.value(QStringLiteral("Cuisine_ID")));
    row.coldBagId = zeroWhenNull(origin.value(QStringLiteral("Cold_Bag_ID")));
    row.dietRestr = origin.value(QStringLiteral("Diet_Restr")).toLongLong();
    row.congregate = origin.text(QStringLiteral("Org_Client")) == QLatin1String("Y");

    row.dietRestrictionsNamed = lFromScratch ? ConvertDietCode(row.dietRestr, m_aDietCodes)
                                             : origin.text(QStringLiteral("Diet_Descr"));
    const QString first = origin.text(QStringLiteral("First_Name"));
    const QString last = origin.text(QStringLiteral("Last_Name"));
    row.firstName = first.toUpper();
    row.lastName = last.toUpper();
    row.pushpinName = (first.trimmed() + QLatin1Char(' ') + last.trimmed().left(1)).toUpper();

    if (over) {
        if (lFromScratch) {
            row.routeId = over->route;
            row.stop = over->stop;
        } else {
            // A route edited and saved in a run survives its reload.
            row.routeId = sourceRoute;
            row.stop = origin.value(QStringLiteral("Stop")).toDouble();
        }
        row.takeAddress(*over);
    } else {
        row.routeId = sourceRoute;
        row.stop = origin.value(QStringLiteral("Stop")).toDouble();
        row.address1 = origin.value(QStringLiteral("Address1"));
        row.city = origin.value(QStringLiteral("City"));
        row.state = origin.value(QStringLiteral("State"));
        row.zip = origin.value(QStringLiteral("ZIP"));
        row.latitude = origin.value(QStringLiteral("Latitude"));
        row.longitude = origin.value(QStringLiteral("Longitude"));
        row.crossStreet = origin.value(QStringLiteral("Cross_Street"));
    }
    m_table.insert(row);
}

void TFormRunPrepare::sortByTitle(const QString& title)
{
    if (const auto index = MemTableDeliveriesModel::indexForTitle(title)) m_model->setIndex(*index);
}

bool TFormRunPrepare::ActionExportData(const GridExportOptions& options, const std::vector<int>& selectedRows)
{
    if (!isEnabled(RunAction::ExportData)) return false;
    return exportDeliveriesGrid(*m_model, options, selectedRows, m_ui);
}

bool TFormRunPrepare::ActionQuickClientsListing()
{
    if (!isEnabled(RunAction::QuickClientsListing)) return false;
    return printDeliveriesListing(m_table, *m_model, m_quickListingPrinter, m_caption, m_ui);
}

QList<std::pair<QString, QString>> TFormRunPrepare::routeChoices()
{
    const ResultSet rows =
        m_db.execute(QStringLiteral("Select Route_ID, Route_Desc from Routes order by Route_ID"));
    QList<std::pair<QString, QString>> choices;
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        choices.append({rows.value(r, 0).toString(), rows.value(r, 1).toString()});
    return choices;
}

QString TFormRunPrepare::clientDetails(int row)
{
    const ResultSet rows =
        m_db.execute(RunStatements::clientDetails(),
                     {{QStringLiteral("Person_ID"), m_model->field(row, QStringLiteral("Person_ID"))}});
    if (rows.isEmpty()) return {};
    const auto text = [&](const char* column) {
        return rows.value(0, QString::fromLatin1(column)).toString().trimmed();
    };
    QStringList lines;
    // A name without a middle name has no gap in it.
    lines << text("Full_Name").simplified() << text("Address1");
    if (!text("Address2").isEmpty()) lines << text("Address2");
    lines << QStringLiteral("%1, %2 %3").arg(text("City"), text("State"), text("Zip"));
    if (!text("Phone").isEmpty()) lines << QStringLiteral("Phone: ") + text("Phone");
    if (!text("OPhone").isEmpty()) lines << QStringLiteral("Other Phone: ") + text("OPhone");
    if (!text("Directions").isEmpty()) lines << QStringLiteral("Directions: ") + text("Directions");
    if (!text("Cross_Street").isEmpty()) lines << QStringLiteral("Cross Street: ") + text("Cross_Street");
    static const char* const days[] = {"Def", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
    // Only the days that have a route or stop of their own say so.
    for (const char* day : days) {
        const QString d = QString::fromLatin1(day);
        const QString route = rows.value(0, d + QStringLiteral("_Rte")).toString().trimmed();
        const QVariant stop = rows.value(0, d + QStringLiteral("_Stop"));
        if (route.isEmpty() && (stop.isNull() || stop.toDouble() == 0)) continue;
        lines << QStringLiteral("%1: Route %2, Stop %3")
                     .arg(d, route.isEmpty() ? QStringLiteral("none") : route,
                          stop.isNull() ? QStringLiteral("none") : QString::number(stop.toDouble(), 'g', 10));
    }
    return lines.join(QLatin1Char('\n'));
}

void TFormRunPrepare::showClientDetails(int row)
{
    const QString details = clientDetails(row);
    if (!details.isEmpty()) m_ui.information(details);
}

void TFormRunPrepare::setTransactionText(const QString& text)
{
    m_transactionText = text;
    emit stateChanged();
}

SpecialMealsSetup TFormRunPrepare::askSpecialMeals()
{
    const std::optional<SpecialMealsSetup> stored = SpecialMealsSetup::read(m_db, m_runDate);
    TFormSetSpecialMeals form(m_db, m_ui, m_dialogs);
    form.setDate(m_runDate);
    form.setCopyVisible(false);
    if (stored)
        form.fill(*stored);
    else
        form.propose();
    // Without a screen the date's own setup is taken as it stands.
    GivenRunDialogs headless;
    if (!(m_dialogs ? *m_dialogs : headless).setSpecialMeals(form))
        return SpecialMealsSetup(); // nothing stored, nothing flagged
    // Kept even when the save then fails.
    form.result().store(m_db, m_runDate);
    return form.result();
}

std::optional<SaveResult> TFormRunPrepare::ActionSaveData()
{
    if (!isEnabled(RunAction::SaveData) || !m_runDate.isValid() || !m_table.exists()) return std::nullopt;
    m_specialMeals = SpecialMealsSetup();
    std::optional<SpecialMealsSetup> flags;
    ConfirmedItems confirmed;
    try {
        if (SpecialMealNames::read(m_db).flagOnSave) {
            m_specialMeals = askSpecialMeals();
            flags = m_specialMeals;
        }
        confirmed = ConfirmDeliveryItems();
    } catch (const std::exception& e) {
        m_ui.error(messageOf(e));
        return std::nullopt;
    }
    return saveInTransaction(confirmed, flags);
}

std::optional<SaveResult> TFormRunPrepare::saveInTransaction(const ConfirmedItems& confirmed,
                                                             const std::optional<SpecialMealsSetup>& flags)
{
    m_ui.progressStart(QStringLiteral("Opening Tables..."));
    const ProgressGuard progress(m_ui);
    const BusyGuard busy(m_ui);
    // Whatever the outcome, Save waits for the next change to the run.
    struct DisableSave
    {
        TFormRunPrepare& form;
        ~DisableSave()
        {
            form.setEnabled(RunAction::SaveData, false);
            emit form.stateChanged();
        }
    } disableSave{*this};
    if (m_db.inTransaction()) {
        m_ui.error(QStringLiteral(
            "Unable to start transaction! There is probably an earlier \r\ntransaction which did "
            "not successfully commit."));
        setTransactionText(QStringLiteral("Error! There is a prior transaction still open!"));
        return std::nullopt;
    }
    setTransactionText(QStringLiteral("Transaction: Saving Deliveries"));
    const qint64 rows = m_table.rowCount();
    RunSaveRequest request;
    request.runDate = m_runDate;
    request.deliveryTypeText = deliveryTypeEntries()[m_deliveryTypeIndex].text;
    request.confirmed = confirmed;
    request.specialMeals = flags;
    request.aDietCodes = m_aDietCodes;
    request.userFullName = m_session.userFullName;
    SaveResult result;
    try {
        result = m_saver.save(request);
    } catch (const std::exception& e) {
        setTransactionText(QStringLiteral("Save Transaction rolled back"));
        m_ui.error(QStringLiteral("Unable to commit the Save Deliveries transaction.\r\n") + messageOf(e));
        return std::nullopt;
    }
    m_saved = true;
    setTransactionText(QStringLiteral("OK"));

    // The work is committed; a count that differs is only told.
    const qint64 stored =
        m_db.execute(QStringLiteral(" Select Count(*) as Counter from deliveri where deliv_dt = ") +
                     QLatin1Char('\'') + m_runDate.toString(Qt::ISODate) + QLatin1Char('\''))
            .value(0, 0)
            .toLongLong();
    if (stored != rows)
        m_ui.error(
            QStringLiteral("One or more deliveries may not have been saved correctly or the Deliveries table "
                           "may be corrupt."));
    return result;
}

void TFormRunPrepare::ActionPopulateGridWithPreviouslySavedDeliveries()
{
    if (!m_dialogs) return;
    DateChoice choice{QStringLiteral("Repopulate the Grid"),
                      QStringLiteral("Select a Previously Saved Date:"),
                      m_runDate.isValid() ? m_runDate : m_pickerDate};
    if (!m_dialogs->chooseDate(choice) || !choice.date.isValid()) return;
    const BusyGuard busy(m_ui);
    Query candidates = m_db.query(RunStatements::populateCandidates());
    OriginDataSet rows(candidates.bind(QStringLiteral("Deliv_Dt"), choice.date).exec());
    if (rows.rowCount() == 0) {
        m_ui.information(
            QStringLiteral("It doesn't appear that there are any previously saved deliveries \r\nfor "
                           "that date!"));
        return;
    }
    m_model->detach();
    m_runDate = choice.date;
    m_pickerDate = choice.date;
    m_dow = RunStatements::dayCode(m_runDate);
    m_lookups.load(m_db, m_runDate);
    if (!m_table.exists()) m_table.createOrEmpty();
    m_table.empty();
    fillTable([&] {
        for (qsizetype r = 0; r < rows.rowCount(); ++r) {
            rows.setCurrentRow(r);
            MoveToMemData(rows, false);
        }
    });
    const qint64 count = m_table.rowCount();
    m_model->setIndex(DeliveriesIndex::RouteStopClient);
    m_clientCountText = QStringLiteral("Client Count: ") + QString::number(count);
    setRunCaption();
    m_saved = true;
    EnableActions(count);
    m_gridVisible = count > 0;
    emit stateChanged();
}

void TFormRunPrepare::setReportScreen(ReportScreen open)
{
    m_reportScreen = std::move(open);
    emit stateChanged();
}

void TFormRunPrepare::ActionPrintReport()
{
    if (!m_reportScreen) return;
    if (!m_saved && isEnabled(RunAction::SaveData) &&
        m_ui.question(QStringLiteral("Save the current data first?"), Buttons::YesNo) == Answer::Yes)
        ActionSaveData();
    m_reportScreen(m_pickerDate, m_pickerDate);
}

} // namespace kb
