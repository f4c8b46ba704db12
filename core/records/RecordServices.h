#pragma once

#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/DataSet.h"

#include <QString>

#include <exception>
#include <functional>

namespace kb {

class Database;
class UserInterface;

// The record services of the main data module that need the person in
// front of the screen: the shared reactions to engine errors on post, edit
// and delete, and the numbering. Every data set that edits shared data
// takes its error hooks from here, so each reaction lives in one place.
//
// Reactions by engine code (post; edit alike with "edit" texts and no
// duplicate key; delete only retries a locked row):
//   9729 duplicate key   tell, abandon the post (the record stays in edit)
//   10258 record locked  ask, Yes retries, No abandons
//   10241 table locked   ask, Yes retries, No abandons
//   8708 changed         tell, re-read the record, retry
//   any other            "Unable to save this record. " + the engine's text
class RecordServices
{
public:
    // The failure report of a fault that is not the engine's; it gets the
    // fault's message after the user has been shown it.
    using FailureReport = std::function<void(const QString& message)>;

    RecordServices(Database& db, UserInterface& ui);

    Database& db() const { return m_db; }
    UserInterface& ui() const { return m_ui; }

    // Where faults that are not the engine's are reported once the user has
    // seen them; none by default.
    void setFailureReport(FailureReport report) { m_failureReport = std::move(report); }

    int GetUniqueID(const QString& counterColumn);

    DataSet::ErrorAction TablePostError(DataSet& dataSet, const DbError& error);
    DataSet::ErrorAction TableEditError(DataSet& dataSet, const DbError& error);
    DataSet::ErrorAction TableDeleteError(DataSet& dataSet, const DbError& error);
    // The maintenance screens' own copy for a post: only the duplicate code
    // and everything else; the record stays in edit in both cases.
    DataSet::ErrorAction MaintenancePostError(DataSet& dataSet, const DbError& error);

    // Gives a data set the shared post, edit and delete reactions.
    void installErrorHooks(DataSet& dataSet);
    // The maintenance screens' hooks: their post copy, the shared edit and
    // delete reactions.
    void installMaintenanceErrorHooks(DataSet& dataSet);

    // A fault that is not the engine's: its own message, then the failure
    // report; the operation it broke is abandoned by the caller.
    void reportForeignError(const std::exception& fault);

    // Runs one step of a screen: a refusal that was already told (Abort)
    // passes silently, an engine error (a refused change included) shows its
    // message, any other fault goes to reportForeignError. True when the
    // step ran to its end.
    template <typename Work> bool guarded(Work&& work);

private:
    // Asks the retry question of a lock conflict; Retry on Yes.
    DataSet::ErrorAction askRetry(const QString& question);
    DataSet::ErrorAction refreshAndRetry(DataSet& dataSet);
    DataSet::ErrorAction lockOrChangeReaction(DataSet& dataSet, const DbError& error, bool& handled);

    Database& m_db;
    UserInterface& m_ui;
    FailureReport m_failureReport;
};

template <typename Work> bool RecordServices::guarded(Work&& work)
{
    try {
        work();
        return true;
    } catch (const Abort&) {
    } catch (const DbError& error) {
        m_ui.error(error.message());
    } catch (const std::exception& fault) {
        reportForeignError(fault);
    }
    return false;
}

// The text of Query_Lines stored under a name in Queries; empty when there
// is none.
QString GetSQLStatement(Database& db, const QString& queryName);

// Stamps the data set's Last_Updated field with the present date and time.
// For the data sets whose rules do not stamp it themselves.
void GenericDatasetBeforePost(DataSet& dataSet);

} // namespace kb
