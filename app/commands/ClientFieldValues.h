#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <utility>
#include <vector>

namespace kb::app {

// FIELD=VALUE words of the client commands, read by the type of the
// Clients column they name, in the CSV conventions of the commands: an
// empty value is null (a quoted "" is the empty text), dates YYYY-MM-DD,
// date-times YYYY-MM-DD HH:MM:SS, booleans true/false, numbers in the C
// locale. Throws UsageError for an unknown or repeated column, one the
// commands do not set (RecordID, PERSON_ID), or a value that does not fit,
// before anything is opened.
using ClientAssignments = std::vector<std::pair<QString, QVariant>>;
ClientAssignments parseClientAssignments(const QStringList& words);

} // namespace kb::app
