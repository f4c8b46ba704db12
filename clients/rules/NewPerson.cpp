#include "rules/NewPerson.h"

#include "Clock.h"
#include "MessageError.h"
#include "dataset/DataSet.h"
#include "records/RecordServices.h"
#include "store/Database.h"

namespace kb {

int setNewPersonDefaults(DataSet& clients, RecordServices& services, const Clock& clock)
{
    const int personId = services.GetUniqueID(QStringLiteral("PERSON_ID"));
    if (personId <= 0) throw MessageError(QStringLiteral("An error occurred obtaining the next Person ID!"));
    const ResultSet config = services.db().execute(QStringLiteral("Select DZIP, DCITY, DSTATE from Config"));
    clients.setFieldValue(u"PERSON_ID", personId);
    clients.setFieldValue(u"ADD_DTE", clock.today());
    clients.setFieldValue(u"EDIT_DTE", clock.today());
    clients.setFieldValue(u"PHONE_DESC", QStringLiteral("P"));
    if (!config.isEmpty()) {
        clients.setFieldValue(u"ZIP", config.value(0, 0));
        clients.setFieldValue(u"CITY", config.value(0, 1));
        clients.setFieldValue(u"STATE", config.value(0, 2));
    }
    clients.setFieldValue(u"ORG_CLIENT", QStringLiteral("N"));
    clients.setFieldValue(u"DELIVERY_TYPE", QStringLiteral("O"));
    clients.setFieldValue(u"STATUS", QVariant());
    clients.setFieldValue(u"ONGOING_FREQUENCY", QStringLiteral("A"));
    return personId;
}

} // namespace kb
