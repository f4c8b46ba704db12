#include "labels/LabelReportData.h"

#include "delivery/DeliveryReportList.h"
#include "delivery/data/DeliveryKeys.h"
#include "delivery/data/ReportBuild.h"
#include "delivery/data/ReportPipes.h"
#include "delivery/questions/ReportQuestions.h"
#include "labels/MemTableLabels.h"
#include "labels/TFormLabelLimit.h"

#include "UserInterface.h"
#include "settings/ConfigRecord.h"
#include "store/Database.h"

namespace kb::reports {

namespace {

const QString LabelPipe = QStringLiteral("DBPipelineQueryLabels");

ReportStatement labelStatement(ReportBuild& build, const LabelSelection& selection)
{
    ReportStatement s;
    s << QStringLiteral(
        "Select Distinct Deliveri.Deliv_ID, Deliveri.Deliv_Dt, Deliveri.DOW, Deliveri.Person_ID, "
        "Deliveri.Client_ID, Clients.Svcs_Used, \n");
    s << QStringLiteral(
        "Deliveri.Route_ID, Deliveri.Stop, Deliveri.Diet_Descr, Deliveri.Cold_Bag_ID, Deliveri.Cuisine_ID, "
        "Deliveri.Address_Overridden, \n");
    s << QStringLiteral(
        "Clients.First_Name, Clients.Mid_Name, Clients.Last_Name, Clients.User_Def1, Clients.User_Def2, \n");
    s << QStringLiteral("Clients.Address1, Clients.Address2, Clients.City, Clients.State, Clients.ZIP, "
                        "Clients.Household_ID, \n");
    s << QStringLiteral("Services.Service_Desc, Deliveri.Diet_Restr, Deliveri.Label_Created, "
                        "Deliveri.Label2_Created, Deliveri.Label3_Created \n");
    s << QStringLiteral(
        "from deliveri join clients on (Deliveri.Person_id=Clients.Person_ID) join services on "
        "(Clients.Svcs_Used=Services.Service_ID) where\n");
    s << QStringLiteral("Deliveri.Number_Labels >= :Number_Labels \n");
    if (build.choices.page == DatePage::NonContiguous) {
        s << QStringLiteral(" and ");
        addSeparateDatesClause(s, build.choices, QStringLiteral("Deliv_Dt"));
    } else {
        s << QStringLiteral(" and ");
        addDateClause(s, build.choices, QStringLiteral("Deliveri.Deliv_Dt"));
    }
    const QString rule = selection.effectiveRule();
    const QString clause = LabelRules::clauseOf(rule, selection.lFilterAll);
    if (!clause.isEmpty()) {
        s << u' ' + clause;
        if (rule == QLatin1String("S")) s.bind(QStringLiteral("nLabelDiet"), selection.nLabelDiet);
    }
    build.limits.AddServiceLimitation(s, QStringLiteral("Deliveri.Svcs_Used"));
    build.limits.AddRouteLimitation(s, QStringLiteral("deliveri.route_id"));
    return s;
}

// The most labels any delivery of the period needs, from "From" to "To"
// whichever date page is used; 0 when the period has no delivery.
int maxLabels(ReportBuild& build)
{
    const ResultSet max = build.db.execute(
        QStringLiteral("Select Max( Number_Labels) as Max_Labels from Deliveri where Deliv_Dt >= :dStart and "
                       "Deliv_Dt <= :dEnd"),
        {{QStringLiteral("dStart"), build.choices.from}, {QStringLiteral("dEnd"), build.choices.to}});
    return max.rowCount() > 0 ? max.value(0, 0).toInt() : 0;
}

ResultSet selectLabels(ReportBuild& build, const ReportStatement& statement, const LabelSelection& selection,
                       int numberLabels)
{
    Params params = statement.params;
    params.emplace_back(QStringLiteral("Number_Labels"), numberLabels);
    ResultSet rows = build.db.execute(statement.text, params);
    return selection.filtersAnyDiet() ? rowsWithAnyDiet(rows, selection.nLabelDiet) : rows;
}

ResultSet severalCopies(ReportBuild& build, ReportStatement statement, const LabelSelection& selection,
                        int copies)
{
    MemTableLabels::ensure(build.db);
    MemTableLabels::empty(build.db);
    statement << QStringLiteral(" NoJoinOptimize ");
    // A delivery of k labels is selected by the first k passes; only the
    // rows a diet filter keeps reach the table.
    for (int n = 1; n <= copies; ++n)
        MemTableLabels::MoveToMemData(build.db, selectLabels(build, statement, selection, n));
    if (!MemTableLabels::hasIndexFor(selection.sortOrder))
        build.ui.information(QStringLiteral("You have chosen a sort order that is not valid\n"
                                            "when printing more than one copy of each label.\n"
                                            "The sort will set to Route/Stop instead."));
    return MemTableLabels::rows(build.db, MemTableLabels::indexName(selection.sortOrder));
}

} // namespace

ReportData buildLabels(ReportBuild& build, int report, const LabelSelection& selection)
{
    ReportData data = ReportData::forReport(report, LabelPipe);
    ReportStatement statement = labelStatement(build, selection);
    const int copies = maxLabels(build);
    ResultSet labels;
    if (copies > 1) {
        labels = severalCopies(build, statement, selection, copies);
    } else {
        // Every delivery gets its one label, also one whose items call for none.
        statement << LabelRules::statementOrder(selection.sortOrder) << QStringLiteral(" NoJoinOptimize ");
        labels = selectLabels(build, statement, selection, 0);
    }
    RowsPipe& main = data.addRows(LabelPipe, std::move(labels));
    DeliveryKeys::fill(build.db, main.allRows());

    addClientDetails(build, data, LabelPipe);
    addLabelItems(build, data);
    addSpecialDiets(build, data, {{QStringLiteral("Deliv_ID"), QStringLiteral("Deliv_ID")}});
    build.addQuery(data, QStringLiteral("DBPipelineClientPreferences"),
                   QStringLiteral("Select Person_ID, Preferences From Clients Where Person_ID in (Select "
                                  "Person_ID from Memory ReportDeliveryKeys)"));
    data.link(QStringLiteral("DBPipelineClientPreferences"), LabelPipe,
              {{QStringLiteral("Person_ID"), QStringLiteral("Person_ID")}});
    if (report == int(DeliveryReport::DeliveryLabelsWithAddresses))
        addAddressOverrides(build, data, ConfigRecord::read(build.db));
    return data;
}

ReportData buildLabels(ReportBuild& build, int report)
{
    TFormLabelLimit form(build.db, build.settings);
    form.FormShow();
    const LabelSelection selection =
        build.questions.askLabelLimit(form) ? form.selection() : form.cancelled();
    return buildLabels(build, report, selection);
}

} // namespace kb::reports
