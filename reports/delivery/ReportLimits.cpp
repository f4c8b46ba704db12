#include "delivery/ReportLimits.h"

#include "settings/ConfigRecord.h"
#include "store/Database.h"

namespace kb::reports {

namespace {

// What a route clause compares with when the checked centers have no
// route: a value no route has, so that the report selects no row.
const QString NoRoute = QStringLiteral("^%$#@");

} // namespace

ReportLimits::ReportLimits(Database& db, const DeliveryReportChoices& choices, ReportParameterRow& parameters)
    : m_db(db), m_choices(choices), m_parameters(parameters)
{
}

int ReportLimits::ExtractServiceID(const QString& text)
{
    const qsizetype open = text.indexOf(u'[');
    if (open < 0) return 0;
    const qsizetype close = text.indexOf(u']', open + 1);
    const QString inside = text.mid(open + 1, close < 0 ? -1 : close - open - 1).trimmed();
    if (inside.isEmpty() || !inside.at(0).isDigit()) return 0;
    qsizetype end = 0;
    while (end < inside.size() && inside.at(end).isDigit())
        ++end;
    return inside.left(end).toInt();
}

QList<int> ReportLimits::checkedServices() const
{
    QList<int> ids;
    for (const QString& entry : m_choices.services.checkedEntries())
        ids << ExtractServiceID(entry);
    return ids;
}

void ReportLimits::AddServiceLimitation(ReportStatement& statement, const QString& fieldName)
{
    if (m_choices.servicesText().isEmpty() || !m_choices.services.limits()) return;
    m_parameters.restrictions1 = m_choices.servicesText();
    QStringList terms;
    for (int id : checkedServices())
        terms
            << QStringLiteral(" (%1 = %2)").arg(fieldName, statement.addValue(QStringLiteral("Service"), id));
    statement << QStringLiteral(" and ( ") << terms.join(QStringLiteral(" or ")) << QStringLiteral(" ) ");
}

QStringList ReportLimits::checkedRoutes()
{
    if (m_choices.routeKind == RouteListKind::Routes) return m_choices.routes.checkedEntries();
    if (!m_centerRoutes) {
        QStringList routes;
        Query lookup =
            m_db.query(QStringLiteral("Select Route_ID from Routes where Dist_Center_Cd = :Dist_Center_Cd"));
        for (const QString& center : m_choices.routes.checkedEntries()) {
            const ResultSet found = lookup.bind(QStringLiteral("Dist_Center_Cd"), center).exec();
            for (qsizetype r = 0; r < found.rowCount(); ++r)
                routes << found.value(r, 0).toString();
        }
        m_centerRoutes = routes;
    }
    return *m_centerRoutes;
}

void ReportLimits::AddRouteLimitation(ReportStatement& statement, const QString& fieldName)
{
    if (m_choices.routesText().isEmpty() || !m_choices.routes.limits()) return;
    const bool centers = m_choices.routeKind == RouteListKind::DistributionCenters;
    const bool exclude = m_choices.excludeRoutes;
    QString words = centers ? (exclude ? QStringLiteral("Excl. Centers: ") : QStringLiteral("Centers: "))
                            : (exclude ? QStringLiteral("Excl. Routes: ") : QStringLiteral("Routes: "));
    m_parameters.restrictions2 = words + QString(m_choices.routesText()).remove(u'\'');

    const QStringList routes = checkedRoutes();
    if (routes.isEmpty()) {
        statement << QStringLiteral(" and (%1 = %2)")
                         .arg(fieldName, statement.addValue(QStringLiteral("Route"), NoRoute));
        return;
    }
    QStringList terms;
    for (const QString& route : routes)
        terms << QStringLiteral(" (%1 = %2)")
                     .arg(fieldName, statement.addValue(QStringLiteral("Route"), route));
    statement << (exclude ? QStringLiteral(" and not ( ") : QStringLiteral(" and ( "))
              << terms.join(QStringLiteral(" or ")) << QStringLiteral(" ) ");
}

QStringList ReportLimits::mealCodes(qint64 mask)
{
    static const QStringList codes{QStringLiteral("B"), QStringLiteral("L"), QStringLiteral("D"),
                                   QStringLiteral("S"), QStringLiteral("O"), QStringLiteral("MF"),
                                   QStringLiteral("SM")};
    QStringList chosen;
    for (int bit = 0; bit < int(codes.size()); ++bit) {
        if (mask >> bit & 1) chosen << codes[bit];
    }
    return chosen;
}

void ReportLimits::AddMealItemLimitation(ReportStatement& statement, const QString& fieldName)
{
    const qint64 mask = ConfigRecord::read(m_db).integer(QStringLiteral("Meals_Line_Items"));
    if (mask <= 0) return;
    QStringList terms;
    for (const QString& code : mealCodes(mask))
        terms
            << QStringLiteral(" (%1 = %2)").arg(fieldName, statement.addValue(QStringLiteral("Meal"), code));
    if (terms.isEmpty()) return;
    statement << QStringLiteral(" and ( ") << terms.join(QStringLiteral(" or ")) << QStringLiteral(" ) ");
}

void ReportLimits::AddItemLimitation(ReportStatement& statement, const QString& fieldName,
                                     std::optional<int> itemId)
{
    if (!itemId) return;
    statement << QStringLiteral(" and %1 = %2")
                     .arg(fieldName, statement.addValue(QStringLiteral("Item_ID"), *itemId));
}

} // namespace kb::reports
