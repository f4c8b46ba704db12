#include "SuspensionCommandWords.h"

#include "CommandSession.h"

#include "Csv.h"
#include "dataset/TableDataSet.h"

#include <stdexcept>

namespace kb::app {

kb::DataSet& standOnPerson(CommandSession& session, qint64 personId)
{
    kb::DataSet& clients = session.data().clients();
    if (!clients.locate(QStringLiteral("PERSON_ID"), personId))
        throw std::runtime_error(QStringLiteral("No person has Person_ID %1.").arg(personId).toStdString());
    return clients;
}

void writeSuspensions(QTextStream& out, kb::Database& db, const QString& condition, const kb::Params& params)
{
    kb::writeCsv(out,
                 db.execute(QStringLiteral("select RecordID, Person_ID, Client_ID, Group_ID, Stop_Dt, "
                                           "Resume_Dt, Reason, User, Create_Date, Last_Updated from Suspends "
                                           "where ") +
                                condition + QStringLiteral(" order by Stop_Dt desc, RecordID"),
                            params));
}

} // namespace kb::app
