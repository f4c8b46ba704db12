#include "delivery/data/ReportBuild.h"

#include "store/Database.h"

namespace kb::reports {

RowsPipe& ReportBuild::addQuery(ReportData& data, const QString& pipe, const ReportStatement& statement)
{
    return data.addRows(pipe, db.execute(statement.text, statement.params));
}

RowsPipe& ReportBuild::addQuery(ReportData& data, const QString& pipe, const QString& text,
                                const Params& params)
{
    return data.addRows(pipe, db.execute(text, params));
}

void addDateClause(ReportStatement& statement, const DeliveryReportChoices& choices, const QString& field)
{
    addDateClause(statement, choices, QStringList{field});
}

void addDateClause(ReportStatement& statement, const DeliveryReportChoices& choices,
                   const QStringList& fields)
{
    const bool single = choices.from == choices.to;
    QStringList parts;
    for (const QString& field : fields) {
        if (single)
            parts << QStringLiteral("(%1 = :dStart)").arg(field);
        else
            parts << QStringLiteral("(%1 >= :dStart) and (%1 <= :dEnd)").arg(field);
    }
    statement << parts.join(QStringLiteral(" and ")) << QStringLiteral(" ");
    statement.bind(QStringLiteral("dStart"), choices.from);
    if (!single) statement.bind(QStringLiteral("dEnd"), choices.to);
}

void addSeparateDatesClause(ReportStatement& statement, const DeliveryReportChoices& choices,
                            const QString& field)
{
    const std::vector<QDate> dates = choices.separateDates();
    statement << QStringLiteral(" ( ");
    for (size_t i = 0; i < dates.size(); ++i) {
        const QString name = QStringLiteral("dDate%1").arg(i + 1);
        statement << (i == 0 ? QString() : QStringLiteral(" or "))
                  << QStringLiteral("(%1 = :%2) ").arg(field, name);
        statement.bind(name, dates[i]);
    }
    // Without any date set the report selects nothing rather than everything.
    if (dates.empty()) statement << QStringLiteral("(%1 is null and %1 is not null) ").arg(field);
    statement << QStringLiteral(" ) ");
}

} // namespace kb::reports
