#pragma once

#include <QString>

#include <stdexcept>

namespace kb::map {

// A failed map server operation. The message is meant to be shown to the
// user as it stands; callers do not retry.
class MapServerError : public std::runtime_error
{
public:
    explicit MapServerError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

} // namespace kb::map
