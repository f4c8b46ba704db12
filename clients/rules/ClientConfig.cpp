#include "rules/ClientConfig.h"

#include "store/Database.h"

namespace kb {

ClientConfig ClientConfig::read(Database& db)
{
    ClientConfig config;
    const ResultSet row = db.execute(QStringLiteral("Select RECERT_WKS, DMON, DTUE, DWED, DTHU, DFRI, DSAT, "
                                                    "DSUN, MAXDIETMOD, ALLOW_BYPASSING_CONTRACT_DATES, "
                                                    "POSTAL_FORMAT from Config"));
    if (row.isEmpty()) return config;
    config.recertWeeks = row.value(0, 0).toInt();
    for (int day = 0; day < 7; ++day)
        config.deliveryDays[size_t(day)] = row.value(0, 1 + day).toBool();
    config.maxDietModifications = row.value(0, 8).toInt();
    config.allowBypassingContractDates = row.value(0, 9).toBool();
    config.postalFormat = row.value(0, 10).toString().trimmed().toUpper();
    return config;
}

} // namespace kb
