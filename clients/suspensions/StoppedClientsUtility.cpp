#include "suspensions/StoppedClientsUtility.h"

#include "ErrorText.h"
#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/DataSet.h"
#include "records/RecordServices.h"
#include "store/Database.h"

namespace kb {

namespace {

// Puts back, however the run ends, what it changed of its surroundings:
// the running flag, the client set's filter and position, the mark.
class RunScope
{
public:
    RunScope(bool& running, DataSet& clients, const std::function<void(bool)>& mark)
        : m_running(running), m_clients(clients), m_mark(mark), m_filtered(clients.isFiltered()),
          m_bookmark(clients.bookmark())
    {
        m_running = true;
        // A client hidden by the window's filter is still changed.
        if (m_filtered) m_clients.setFiltered(false);
        if (m_mark) m_mark(true);
    }
    ~RunScope()
    {
        if (m_mark) m_mark(false);
        try {
            if (m_clients.state() != DataSet::State::Browse) m_clients.cancel();
            if (m_filtered) m_clients.setFiltered(true);
            if (m_clients.bookmarkValid(m_bookmark)) m_clients.gotoBookmark(m_bookmark);
        } catch (...) {
            // The position is a convenience; the run's own outcome stands.
        }
        m_running = false;
    }
    RunScope(const RunScope&) = delete;
    RunScope& operator=(const RunScope&) = delete;

private:
    bool& m_running;
    DataSet& m_clients;
    const std::function<void(bool)>& m_mark;
    bool m_filtered;
    DataSet::Bookmark m_bookmark;
};

} // namespace

StoppedClientsUtility::StoppedClientsUtility(RecordServices& services, UserInterface& ui, DataSet& clients,
                                             const QDate& date)
    : m_services(services), m_ui(ui), m_clients(clients), m_date(date)
{
}

std::vector<StoppedClientsUtility::Row> StoppedClientsUtility::selection() const
{
    const ResultSet rows =
        m_services.db().execute(selectionStatement(), {{QStringLiteral("dStopDate"), m_date}});
    std::vector<Row> result;
    result.reserve(size_t(rows.rowCount()));
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        Row row;
        row.clientId = rows.value(r, 0).toString();
        row.firstName = rows.value(r, 1).toString();
        row.lastName = rows.value(r, 2).toString();
        row.status = rows.value(r, 3).toString();
        row.startDate = rows.value(r, 4).toDate();
        row.stopDate = rows.value(r, 5).toDate();
        row.editDate = rows.value(r, 6).toDate();
        row.firstMealDate = rows.value(r, 7).toDate();
        row.stopReason = rows.value(r, 8).toString();
        row.note = rows.value(r, 9).toString();
        result.push_back(row);
    }
    return result;
}

bool StoppedClientsUtility::ActionAll()
{
    m_changes.clear();
    try {
        std::vector<std::pair<QString, QString>> statuses;
        for (const Row& row : selection())
            statuses.emplace_back(row.clientId, toStatus());
        setStatuses(statuses, progressText());
    } catch (const Abort&) {
        m_changes.clear();
        m_ui.error(errorPrefix() + QStringLiteral("the change of a client was refused."));
        return false;
    } catch (const std::exception& fault) {
        m_changes.clear();
        m_ui.error(errorPrefix() + errorText(fault));
        return false;
    }
    return true;
}

bool StoppedClientsUtility::applyStatuses(const std::vector<Row>& rows)
{
    m_changes.clear();
    std::vector<std::pair<QString, QString>> statuses;
    for (const Row& row : rows)
        if (row.status == QLatin1String("S") || row.status == QLatin1String("I"))
            statuses.emplace_back(row.clientId, row.status);
    try {
        setStatuses(statuses, listProgressText());
    } catch (const std::exception&) {
        m_changes.clear();
        return false;
    }
    return true;
}

void StoppedClientsUtility::setStatuses(const std::vector<std::pair<QString, QString>>& statuses,
                                        const QString& progress)
{
    struct Progress
    {
        UserInterface& ui;
        explicit Progress(UserInterface& u, const QString& text) : ui(u) { ui.progressStart(text); }
        ~Progress() { ui.progressEnd(); }
    } shown(m_ui, progress);

    Database& db = m_services.db();
    if (!m_clients.isActive()) m_clients.open();
    m_clients.checkBrowseMode();
    {
        RunScope scope(m_running, m_clients, m_mark);
        try {
            TransactionGuard transaction(db);
            // Clients another workstation added since the set was read are found too.
            m_clients.refresh();
            const size_t total = statuses.size();
            for (size_t i = 0; i < total; ++i) {
                const auto& [clientId, status] = statuses[i];
                if (!clientId.trimmed().isEmpty() &&
                    m_clients.locate(QStringLiteral("CLIENT_ID"), clientId)) {
                    Change change;
                    change.clientId = clientId;
                    change.personId = m_clients.fieldValue(u"PERSON_ID").toLongLong();
                    change.firstName = m_clients.fieldValue(u"FIRST_NAME").toString();
                    change.lastName = m_clients.fieldValue(u"LAST_NAME").toString();
                    change.stopDate = m_clients.fieldValue(u"STOP_DTE").toDate();
                    change.oldStatus = m_clients.fieldValue(u"STATUS").toString();
                    change.newStatus = status;
                    m_clients.edit();
                    m_clients.setFieldValue(u"STATUS", status);
                    m_clients.post();
                    if (change.oldStatus != change.newStatus) m_changes.push_back(change);
                }
                m_ui.progressStep(int(100 * (i + 1) / total));
            }
            transaction.commit();
        } catch (...) {
            // The rows the set holds are those of the rolled-back work.
            if (m_clients.state() != DataSet::State::Browse) m_clients.cancel();
            try {
                m_clients.refresh();
            } catch (...) {
            }
            throw;
        }
    }
    m_clients.flushBuffers();
}

} // namespace kb
