#pragma once

#include <QString>

#include <stdexcept>

namespace kb {

// A failure whose text is what the user is told, word for word.
class MessageError : public std::runtime_error
{
public:
    explicit MessageError(const QString& message) : std::runtime_error(message.toStdString()), m_message(message) {}
    const QString& message() const { return m_message; }

private:
    QString m_message;
};

} // namespace kb
