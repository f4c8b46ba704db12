#pragma once

#include "delivery/ReportChoices.h"
#include "delivery/questions/ReportQuestions.h"

#include "store/Database.h"

#include <QDate>

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

// Answers the questions of a report from what the test sets.
class GivenQuestions final : public reports::ReportQuestions
{
public:
    std::function<bool(reports::TFormDeliveryDietCriteria&)> dietCriteria;
    std::function<bool(reports::TFormClientItemsSortOrder&)> sortOrder;
    std::function<bool(reports::TFormItemLimitation&)> itemLimitation;
    int asked = 0;

    bool askDietCriteria(reports::TFormDeliveryDietCriteria& form) override;
    bool askClientItemsSortOrder(reports::TFormClientItemsSortOrder& form) override;
    bool askItemLimitation(reports::TFormItemLimitation& form) override;
};

} // namespace kb::test
