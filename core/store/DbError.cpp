#include "store/DbError.h"

namespace kb {

namespace {
std::string fullText(const QString& message, const QString& statement)
{
    if (statement.isEmpty())
        return message.toStdString();
    return (message + QStringLiteral("\nStatement: ") + statement.simplified()).toStdString();
}
} // namespace

DbError::DbError(DbErrorCode code, const QString& message, const QString& statement)
    : std::runtime_error(fullText(message, statement)), m_code(code), m_message(message),
      m_statement(statement)
{
}

} // namespace kb
