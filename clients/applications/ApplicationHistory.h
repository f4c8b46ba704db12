#pragma once

#include <QString>

namespace kb {

// The History text of an application's status change: "App status changed
// from Pending to Approved.", "Service App created with status of
// Pending." when there was no status, "Service App created." when the new
// status is empty. Codes: "I" In Process, "P" Pending, "A" Approved, "D"
// Denied, "C" Cancelled, "W" Wait-Listed.
// The word of a status in the application list ("A" is "Accepted" there).
QString applicationStatusWord(const QString& status);

QString applicationStatusEvent(const QString& oldStatus, const QString& newStatus);

} // namespace kb
