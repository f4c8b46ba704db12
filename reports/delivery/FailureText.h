#pragma once

#include <QString>

#include <exception>

namespace kb::reports {

// The plain text a report screen shows for a failure: the system's message
// of a MessageError or a DbError, else the fault's own words.
QString failureText(const std::exception& failure);

} // namespace kb::reports
