#pragma once

#include "store/ResultSet.h"

namespace kb {
class Database;
}

namespace kb::reports {

// The persons and dates of a report's rows, in the memory table
// ReportDeliveryKeys (Person_ID, Deliv_Dt, DOW): what the report's detail
// statements join with, so that each detail is read in one statement for
// the whole report instead of once per row, and only for the rows the
// report shows.
class DeliveryKeys
{
public:
    static QString tableName() { return QStringLiteral("ReportDeliveryKeys"); }

    // Fills the table with the distinct keys of the rows; rows without a
    // weekday (DOW) get their date's.
    static void fill(Database& db, const ResultSet& rows);
};

} // namespace kb::reports
