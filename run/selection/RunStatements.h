#pragma once

#include <QDate>
#include <QString>

namespace kb {

// The statements of preparing a run, word for word as the run's rules give
// them; only the weekday columns and the suspension clause vary.
namespace RunStatements {

// "MON" ... "SUN": the first three letters of the English day name.
QString dayCode(const QDate& date);

// The ongoing selection for the weekday of the date (1 = Monday).
QString ongoingSelection(int dayOfWeek);

// The Clients and FundUses column of the weekday's flag: "Monday" ... "Sunday".
QString weekdayColumn(int dayOfWeek);

// The funding of one delivery on the weekday of the run (:Person_id,
// :Service_ID): the client's FundUses rows of that service or of all
// services (Service_ID 0) that are true on the weekday.
QString fundingStatement(int dayOfWeek);

// The episodic and scheduled selection; with excludeSuspended the suspension
// clause is added (scheduled deliveries under SUSPEND_SCHEDULED_DELIVERIES).
QString datedSelection(bool excludeSuspended);

// The address override of one client on one date (:Person_ID, :DOW,
// :Deliv_Date): "D" before "O" before "T", at most one row.
const QString& overrideStatement();

// Every override that applies on a date (:DOW, :Deliv_Date), for all
// clients at once; AddressOverrides picks per client as overrideStatement
// does.
const QString& overridesOfDate();

// The client details of a row of the run, by :Person_ID.
const QString& clientDetails();

// QueryPopulateCandidates: the stored deliveries of a date (:Deliv_Dt) with
// their clients, for reloading a saved run.
const QString& populateCandidates();

} // namespace RunStatements

} // namespace kb
