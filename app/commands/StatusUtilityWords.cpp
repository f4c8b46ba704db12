#include "StatusUtilityWords.h"

#include "CommandSession.h"

#include "Csv.h"
#include "dataset/TableDataSet.h"
#include "session/TDataModule1.h"
#include "suspensions/StoppedClientsUtility.h"

namespace kb::app {

int runStatusUtility(CommandContext& context, const CommandArgs& args, const MakeUtility& make)
{
    CommandSession session(context);
    TDataModule1& data = session.data();
    const std::unique_ptr<StoppedClientsUtility> utility =
        make(data.services(), session.ui(), data.clients(), data.clock());
    utility->setDate(args.date(QStringLiteral("date"), utility->date()));
    if (!utility->ActionAll()) return 1;
    writeCsvHeader(context.out,
                   {QStringLiteral("Client_ID"), QStringLiteral("Person_ID"), QStringLiteral("First_Name"),
                    QStringLiteral("Last_Name"), QStringLiteral("Stop_Dte"), QStringLiteral("Old_Status"),
                    QStringLiteral("Status")});
    for (const StoppedClientsUtility::Change& change : utility->changes())
        writeCsvRecord(context.out, {change.clientId, change.personId, change.firstName, change.lastName,
                                     change.stopDate, change.oldStatus, change.newStatus});
    session.close();
    return 0;
}

} // namespace kb::app
