#pragma once

#include "ReportOutput.h"
#include "delivery/ReportChoices.h"
#include "delivery/questions/ReportQuestions.h"

#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "delivery/DeliveryReportContext.h"
#include "settings/SettingsFile.h"
#include "store/Database.h"

#include <QDate>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

namespace kb::test {

// A small agency with two saved runs of known content, the data of the
// delivery report tests and of their golden files:
//
// Services 1 "Home Delivered Meals" and 2 "Frozen Meals" (deliveries), 5
// counseling. Diets 1 DIAB, 2 LS, 3 REN. Centers NORTH (routes N1, N2),
// SOUTH (S1, O'B1) and WEST (no route); route E1 has no center.
//
// Wednesday 6 March 2024 (saved yesterday 14:00), seven deliveries:
//   N1 1 Abbott 101; N1 2 Baxter 102 (DIAB, special meal 1) and Baxter 103
//   (same household, custom items); N2 1 Castellano 104 (Frozen, DIAB / LS,
//   Kosher, special meal 2); S1 1 Eriksen 106 (a child); S1 3 Dubois 105
//   (REN, at an alternate address for the day); E1 1 the Senior Center 109.
// Thursday 7 March 2024 (saved today 10:00), four: 101, 104, 105 (on N2),
// 106.
// Fitzgerald 107 (active) and Okafor 108 (suspended) have no delivery.
void makeReportAgency(Database& db);

inline const QDate wednesday(2024, 3, 6);
inline const QDate thursday(2024, 3, 7);

// The choices of a report over the agency's lists, with nothing limited.
reports::DeliveryReportChoices choicesFor(Database& db, int report, const QDate& from, const QDate& to);

// A user-defined delivery report in the folder, "USERREPORTDELIVERYMeals per
// Route.rtm": the meals of the period by route, from a statement of its own,
// under a title line of the agency's name and the period's start.
QString writeMealsPerRouteReport(const QString& folder);

// Keeps what a report screen would have shown or printed.
class RecordingOutput final : public reports::ReportOutput
{
public:
    std::vector<std::shared_ptr<const reports::ReportDocument>> previews;
    int printed = 0;
    void preview(std::shared_ptr<const reports::ReportDocument> document) override
    {
        previews.push_back(std::move(document));
    }
    bool print(const reports::ReportDocument&, bool) override
    {
        ++printed;
        return true;
    }
};

// Answers the questions of a report from what the test sets.
class GivenQuestions final : public reports::ReportQuestions
{
public:
    std::function<bool(reports::TFormDeliveryDietCriteria&)> dietCriteria;
    std::function<bool(reports::TFormClientItemsSortOrder&)> sortOrder;
    std::function<bool(reports::TFormItemLimitation&)> itemLimitation;
    // Unset: the labels' dialog is cancelled, which prints every label.
    std::function<bool(reports::TFormLabelLimit&)> labelLimit;
    int asked = 0;

    bool askDietCriteria(reports::TFormDeliveryDietCriteria& form) override;
    bool askClientItemsSortOrder(reports::TFormClientItemsSortOrder& form) override;
    bool askItemLimitation(reports::TFormItemLimitation& form) override;
    bool askLabelLimit(reports::TFormLabelLimit& form) override;
};

// The agency in a data directory, the fixed reports' templates in a folder
// of their own, a user's settings file, and a report screen's context for
// the user "pat" with everything it tells recorded.
class ReportScreenFixture : public ::testing::Test
{
protected:
    void SetUp() override;

    TempDataDir data;
    QTemporaryDir templates;
    QTemporaryDir home;
    SettingsFile settings{home.path()};
    ScriptedUserInterface ui;
    GivenQuestions questions;
    RecordingOutput output;
    reports::DeliveryReportContext context{data.db(), data.clock(),    ui, QStringLiteral("pat"),
                                           &settings, templates.path()};
};

} // namespace kb::test
