#pragma once

#include "delivery/ReportChoices.h"
#include "delivery/ReportStatement.h"

#include <optional>

namespace kb {
class Database;
}

namespace kb::reports {

// The period and the limits in words, as every delivery report can print
// them from MemTableKettlebrookReportParameters.
struct ReportParameterRow
{
    QString periodBeginning;
    QString periodEnding;
    QString restrictions1; // the service limitation
    QString restrictions2; // the route or center limitation
};

// The limit clauses of the delivery reports. Each appends its clause to a
// statement only when it limits anything, with every value a parameter,
// and writes its words into the report parameters.
class ReportLimits
{
public:
    ReportLimits(Database& db, const DeliveryReportChoices& choices, ReportParameterRow& parameters);

    // " and (  (field = :Service1) or  (field = :Service2) ) " for the
    // checked services.
    void AddServiceLimitation(ReportStatement& statement, const QString& fieldName);
    // " and ( " or " and not ( " the checked routes (a center stands for its
    // routes) " ) "; centers without any route select nothing.
    void AddRouteLimitation(ReportStatement& statement, const QString& fieldName);
    // The meals of Config.Meals_Line_Items, when any is set.
    void AddMealItemLimitation(ReportStatement& statement, const QString& fieldName);
    // " and field = :Item_ID" for a chosen item; nothing without one.
    static void AddItemLimitation(ReportStatement& statement, const QString& fieldName,
                                  std::optional<int> itemId);

    // The number between the first "[" and the following "]" of a list
    // entry; 0 when it does not start with a digit.
    static int ExtractServiceID(const QString& text);
    // The routes of the checked entries: the entries themselves, or the
    // routes of the checked centers.
    QStringList checkedRoutes();
    // The service numbers of the checked entries.
    QList<int> checkedServices() const;

    // The meal codes of the bits 0 to 6 of Meals_Line_Items.
    static QStringList mealCodes(qint64 mask);

private:
    Database& m_db;
    const DeliveryReportChoices& m_choices;
    ReportParameterRow& m_parameters;
    std::optional<QStringList> m_centerRoutes;
};

} // namespace kb::reports
