#include "records/RecordServices.h"

#include "store/Database.h"
#include "records/UniqueId.h"
#include "UserInterface.h"

namespace kb {

namespace {

const QString DuplicatedCode = QStringLiteral("Not able to save this record- it creates a duplicated Code.");
const QString RecordLockedQuestion = QStringLiteral(
    "The record you are trying to edit is currently locked, do you want to try to edit this record again?");
const QString TableLockedQuestion = QStringLiteral(
    "The table you are trying to edit is currently locked, do you want to try to edit this record again?");
const QString ChangedMessage =
    QStringLiteral("The record you are trying to edit has been modified since it was last "
                   "retrieved, the record will now be refreshed");
const QString DeleteLockedQuestion = QStringLiteral(
    "This record is being updated by another user, would you like to retry the delete operation ?");

} // namespace

RecordServices::RecordServices(Database& db, UserInterface& ui) : m_db(db), m_ui(ui) {}

int RecordServices::GetUniqueID(const QString& counterColumn)
{
    return kb::GetUniqueID(m_db, counterColumn);
}

DataSet::ErrorAction RecordServices::askRetry(const QString& question)
{
    return m_ui.question(question, Buttons::YesNo) == Answer::Yes ? DataSet::ErrorAction::Retry
                                                                  : DataSet::ErrorAction::Abort;
}

DataSet::ErrorAction RecordServices::refreshAndRetry(DataSet& dataSet)
{
    m_ui.information(ChangedMessage);
    dataSet.refresh();
    return DataSet::ErrorAction::Retry;
}

// The rows that post and edit share: the two lock questions and the
// refresh of a record another user changed.
DataSet::ErrorAction RecordServices::lockOrChangeReaction(DataSet& dataSet, const DbError& error,
                                                          bool& handled)
{
    handled = true;
    switch (error.code()) {
    case DbErrorCode::RecordLocked:
        return askRetry(RecordLockedQuestion);
    case DbErrorCode::TableLocked:
        return askRetry(TableLockedQuestion);
    case DbErrorCode::ChangedSinceRead:
        return refreshAndRetry(dataSet);
    default:
        handled = false;
        return DataSet::ErrorAction::Fail;
    }
}

DataSet::ErrorAction RecordServices::TablePostError(DataSet& dataSet, const DbError& error)
{
    if (error.code() == DbErrorCode::DuplicateKey) {
        m_ui.warning(DuplicatedCode);
        return DataSet::ErrorAction::Abort;
    }
    bool handled = false;
    const DataSet::ErrorAction action = lockOrChangeReaction(dataSet, error, handled);
    if (handled) return action;
    m_ui.error(QStringLiteral("Unable to save this record. ") + error.message());
    return DataSet::ErrorAction::Abort;
}

DataSet::ErrorAction RecordServices::TableEditError(DataSet& dataSet, const DbError& error)
{
    bool handled = false;
    const DataSet::ErrorAction action = lockOrChangeReaction(dataSet, error, handled);
    if (handled) return action;
    m_ui.error(QStringLiteral("Unable to edit this record. ") + error.message());
    return DataSet::ErrorAction::Abort;
}

DataSet::ErrorAction RecordServices::TableDeleteError(DataSet&, const DbError& error)
{
    if (error.code() == DbErrorCode::RecordLocked) return askRetry(DeleteLockedQuestion);
    m_ui.error(error.message());
    return DataSet::ErrorAction::Abort;
}

DataSet::ErrorAction RecordServices::MaintenancePostError(DataSet&, const DbError& error)
{
    if (error.code() == DbErrorCode::DuplicateKey)
        m_ui.warning(DuplicatedCode);
    else
        m_ui.error(QStringLiteral("Unable to save this record. ") + error.message());
    return DataSet::ErrorAction::Abort;
}

void RecordServices::installErrorHooks(DataSet& dataSet)
{
    using namespace std::placeholders;
    dataSet.setErrorHook(DataSet::Hook::OnPostError,
                         std::bind(&RecordServices::TablePostError, this, _1, _2));
    dataSet.setErrorHook(DataSet::Hook::OnEditError,
                         std::bind(&RecordServices::TableEditError, this, _1, _2));
    dataSet.setErrorHook(DataSet::Hook::OnDeleteError,
                         std::bind(&RecordServices::TableDeleteError, this, _1, _2));
}

void RecordServices::installMaintenanceErrorHooks(DataSet& dataSet)
{
    using namespace std::placeholders;
    installErrorHooks(dataSet);
    dataSet.setErrorHook(DataSet::Hook::OnPostError,
                         std::bind(&RecordServices::MaintenancePostError, this, _1, _2));
}

void RecordServices::reportForeignError(const std::exception& fault)
{
    const QString message = QString::fromUtf8(fault.what());
    m_ui.error(message);
    if (m_failureReport) m_failureReport(message);
}

QString GetSQLStatement(Database& db, const QString& queryName)
{
    const ResultSet rows =
        db.execute(QStringLiteral("Select Query_Lines from Queries where Query_Name = :Query_Name"),
                   {{QStringLiteral("Query_Name"), queryName}});
    return rows.isEmpty() ? QString() : rows.value(0, 0).toString();
}

void GenericDatasetBeforePost(DataSet& dataSet)
{
    dataSet.setFieldValue(u"Last_Updated", dataSet.database().clock().now());
}

} // namespace kb
