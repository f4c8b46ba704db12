#pragma once

#include <QString>

#include <stdexcept>

namespace kb::routes {

// Every failure of stop ordering and of reading route data: the message is
// written for the person who started the run and is shown as it stands.
class RoutingError : public std::runtime_error
{
public:
    explicit RoutingError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

} // namespace kb::routes
