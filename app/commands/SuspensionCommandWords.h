#pragma once

#include "store/Database.h"

#include <QTextStream>

namespace kb {
class DataSet;
}

namespace kb::app {

class CommandSession;

// What the suspension commands share.

// Stands the session's Clients set (with the client rules) on the person;
// throws "No person has Person_ID N." when there is none.
kb::DataSet& standOnPerson(CommandSession& session, qint64 personId);

// The columns of Suspends that the commands print, from the rows the
// condition (after "where") selects, by stop date, latest first.
void writeSuspensions(QTextStream& out, kb::Database& db, const QString& condition, const kb::Params& params);

} // namespace kb::app
